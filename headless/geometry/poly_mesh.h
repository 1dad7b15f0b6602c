// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "headless/geometry/vec3.h"
#include "host/vector.h"

/// The geometry kernel of the stand-in host: pure functions on plain arrays.
///
/// Space: left-handed, Y up, in document units (centimetres unless the document says otherwise).
///
/// Winding: a polygon's corners a, b, c, d run clockwise for a viewer who stands outside, with the axes
/// drawn left-handed. In formulas: cross(b - a, d - a), by the ordinary formula on the coordinates, points
/// outward. Whoever swaps two axes and reverses the corners gets counter-clockwise outward faces of a
/// right-handed space.
///
/// Texture coordinates: u to the right and v downwards as seen from outside, (0, 0) at the texture's top
/// left.
namespace headless::geometry {

struct PolyMesh {
    std::vector<Vector> points;
    /// A triangle has c equal to d.
    std::vector<CPolygon> polygons;
    /// Empty, or one entry per polygon. A triangle's d repeats its c.
    std::vector<UVWStruct> uvw;
};

/// Point indices of a polygon as an array.
constexpr std::array<int32_t, 4> cornersOf(const CPolygon& polygon) {
    return {polygon.a, polygon.b, polygon.c, polygon.d};
}

constexpr int cornerCount(const CPolygon& polygon) {
    return polygon.IsTriangle() ? 3 : 4;
}

/// The polygon's area times its outward unit normal: half the cross product of the diagonals, which is exact
/// for triangles and flat quads and averages the halves of a bent quad. NaN when a point isn't finite.
/// The indices must be valid.
inline Vec3 areaVector(std::span<const Vector> points, const CPolygon& polygon) {
    const auto at = [&](int32_t index) { return Vec3(points[static_cast<std::size_t>(index)]); };
    return cross(at(polygon.c) - at(polygon.a), at(polygon.d) - at(polygon.b)) * 0.5;
}

/// True when every polygon points into the point array and the UVW array is empty or one per polygon.
/// Otherwise `reason` names the first fault, for polygons with the polygon and the index.
/// The other functions of this kernel take meshes that pass; positions may be any numbers, also NaN.
bool validate(const PolyMesh& mesh, std::string& reason);

/// Reverses the corners of the polygons from `first` on, keeping each first corner; triangles stay triangles.
/// UVWs go along.
void flipWinding(PolyMesh& mesh, std::size_t first = 0);

struct Bounds {
    Vector centre;
    /// Half of the extents.
    Vector radius;
};

/// The axis-aligned box of the finite points; zero without any.
Bounds boundsOf(std::span<const Vector> points);

} // namespace headless::geometry
