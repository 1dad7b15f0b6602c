// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "headless/geometry/poly_mesh.h"

namespace headless::geometry {

/// The host's phong tag.
struct PhongSettings {
    /// Without the limit every edge between two polygons is smooth, unless it's broken.
    bool angleLimited = true;
    /// Radians. An edge is smooth when its polygons' normals differ by no more.
    double angleLimit = 1.3962634015954636; // 80 degrees
    /// Empty, or one byte per polygon: bit n breaks the polygon's edge n (0 is a-b, 1 b-c, 2 c-d, 3 d-a; the
    /// edge c-a of a triangle is number 3). An edge is broken when either of its polygons breaks it.
    std::span<const uint8_t> brokenEdges;
};

/// Shading normals per corner: four unit vectors per polygon, a triangle's fourth equal to its third.
///
/// The corners at a point fall into groups that are connected across smooth edges at this point; each group
/// has one normal, the mean of its polygons' normals weighted by their corner angles at the point, which
/// doesn't depend on how the surface is divided into polygons (G. Thürmer, C. A. Wüthrich, "Computing Vertex
/// Normals from Polygonal Facets", Journal of Graphics Tools 3(1), 1998). Points must be welded: coincident
/// points don't know of each other.
///
/// A polygon without area, or with a point that isn't finite, has zero normals and connects nothing; a group
/// whose normals cancel out keeps its polygons' own normals. The indices must be valid (see `validate`). Time
/// grows with the corners (and their logarithm at one point); runs on all processors.
std::vector<Vector> computePhongNormals(std::span<const Vector> points, std::span<const CPolygon> polygons,
                                        const PhongSettings& settings);
/// The same into `result`, which has room for four vectors per polygon.
void computePhongNormals(std::span<const Vector> points, std::span<const CPolygon> polygons,
                         const PhongSettings& settings, std::span<Vector> result);

/// The bytes of `PhongSettings::brokenEdges` from edges numbered polygon * 4 + edge, as an edge
/// selection of the host stores them. Numbers outside are left out.
std::vector<uint8_t> brokenEdgeBytes(std::size_t polygonCount, std::span<const int64_t> edges);

} // namespace headless::geometry
