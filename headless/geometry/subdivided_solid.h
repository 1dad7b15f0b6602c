// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <vector>

#include "headless/geometry/poly_mesh.h"

namespace headless::geometry {

/// A regular solid of triangles: unit vectors, faces wound outward.
struct Solid {
    std::vector<Vec3> vertices;
    std::vector<std::array<int32_t, 3>> faces;
};

/// A vertex at the upper pole and a face below.
Solid tetrahedron();
/// Vertices at both poles.
Solid octahedron();
Solid icosahedron();

/// Divides each face into divisions * divisions triangles, with common points along common edges, and moves
/// the points onto the unit sphere. No UVs.
PolyMesh subdivideOnSphere(const Solid& solid, int divisions);

} // namespace headless::geometry
