// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <span>
#include <vector>

#include "headless/geometry/poly_mesh.h"

namespace headless::geometry {

/// How a texture tag lays its texture on an object, numbered as documents store it in the tag's parameter
/// 1004.
///
/// The texture space is the object's space brought through the inverse of the tag's matrix, whose axes are
/// half of the texture's extents: the texture covers [-1, 1] there. With p a point of that space:
enum class Projection : int {
    /// u is the angle around Y from +X towards +Z, v the angle from the upper pole.
    Spherical = 0,
    /// u as for the sphere, v falls with the height: 0 at y = 1, 1 at y = -1.
    Cylindrical = 1,
    /// A slide projector looking along +Z: u = (1 + x) / 2, v = (1 - y) / 2.
    Flat = 2,
    /// Flat from the side that the polygon looks to, upright and readable on all six.
    Cubic = 3,
    /// The render camera's picture covers the texture once.
    Frontal = 4,
    /// Flat, but the texture moves left and up with the depth: z / 2 is added to u and to v.
    Spatial = 5,
    /// The object's own UVWs.
    UVWMapping = 6,
    /// The texture's inscribed disc is drawn over the sphere: its centre lies on the upper pole, its rim is
    /// gathered at the lower.
    ShrinkWrapping = 7,
    /// As frontal, through the tag's own camera.
    CameraMapping = 8
};

/// A camera as a projector. It stands at the origin of its space and looks along +Z, with X to the right and
/// Y up.
struct ProjectionCamera {
    /// From the object's space to the camera's.
    Matrix fromObject;
    /// In one unit with `apertureWidth`; only their ratio counts.
    float focalLength = 36.0f;
    float apertureWidth = 36.0f;
    /// Width of the picture over its height.
    float aspect = 4.0f / 3.0f;
    bool parallel = false;
    /// Width of the picture in document units, for a parallel camera.
    float parallelWidth = 1024.0f;
};

/// UVWs of one projection for all polygons, without the tag's tiling (offset and length): u to the right, v
/// downwards, w zero. A polygon that crosses the seam of a spherical or cylindrical projection runs on beyond
/// u = 1, and a corner on the axis has the mean u of its neighbours. Values are finite: a point that isn't
/// gives (0, 0). Empty when the projection has nothing to work with: UVW mapping without `existing` for each
/// polygon, a camera projection without `camera`, an unknown number.
std::vector<UVWStruct> generateUVW(Projection projection, std::span<const Vector> points,
                                   std::span<const CPolygon> polygons, const Matrix& objectToTexture,
                                   std::span<const UVWStruct> existing = {},
                                   const std::optional<ProjectionCamera>& camera = std::nullopt);

} // namespace headless::geometry
