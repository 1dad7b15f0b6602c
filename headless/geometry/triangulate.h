// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "headless/geometry/poly_mesh.h"

namespace headless::geometry {

/// Cuts a simple polygon of n corners, convex or not, into n - 2 triangles with the polygon's winding.
/// `corners` are indices into `points`, which must be valid; the triangles use the same indices. Nearly flat
/// polygons are judged in the plane of their mean normal.
///
/// Ears are cut one by one (G. Meisters, "Polygons Have Ears", American Mathematical Monthly 82, 1975), and
/// every corner stays in use, also one in the middle of a straight edge. Where no ear is left, or after a
/// bounded amount of work, as with polygons that cross themselves, the rest becomes a fan. Fewer than three
/// corners give nothing.
std::vector<std::array<int32_t, 3>> triangulate(std::span<const int32_t> corners,
                                                std::span<const Vector> points);

/// The same by place: the triangles name positions in `corners` (0 to n - 1), for callers that carry
/// further data per corner.
std::vector<std::array<int32_t, 3>> triangulatePlaces(std::span<const int32_t> corners,
                                                      std::span<const Vector> points);

} // namespace headless::geometry
