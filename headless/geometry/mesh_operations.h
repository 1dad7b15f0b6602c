// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <vector>

#include "headless/geometry/poly_mesh.h"

namespace headless::geometry {

/// True when the matrix turns the inside of a mesh out, as a negative scale does.
bool isMirrored(const Matrix& matrix);

/// Transforms the points. A matrix that mirrors also flips the winding, so that faces keep looking outward.
void transformMesh(PolyMesh& mesh, const Matrix& matrix);

/// Adds `source`, transformed as by `transformMesh`, behind the points and polygons of `target`. When only
/// one of the two has UVWs the other's are zero. `source` is another mesh than `target`.
void appendMesh(PolyMesh& target, const PolyMesh& source, const Matrix& matrix);

struct SymmetryParameters {
    enum class Plane : int { YZ = 0, XZ = 1, XY = 2 };
    /// Plane through the origin that the mesh is mirrored on; other numbers stand for the first.
    Plane plane = Plane::YZ;
    /// Points nearer to the plane than `tolerance` are moved onto it and shared by both halves.
    bool weld = true;
    float tolerance = 0.01f;
};
/// The mesh followed by its mirror image, whose polygons are in the same order with the winding flipped and
/// the UVWs kept. A polygon that lies wholly in the plane by welding has no image: it would be its own back
/// side.
PolyMesh makeSymmetry(const PolyMesh& mesh, const SymmetryParameters& parameters);

struct WeldResult {
    /// New index of each old point.
    std::vector<int32_t> pointMap;
    /// New index of each old polygon; -1 for those that collapsed.
    std::vector<int32_t> polygonMap;
};
/// Merges points that are no farther apart than `tolerance` (0 merges equal ones only), each with the first
/// such point that is kept. Quads that lose a corner become triangles, and what loses more goes. Points that
/// aren't finite are kept as they are. Linear time for points that don't crowd within the tolerance.
WeldResult weldPoints(PolyMesh& mesh, float tolerance);

} // namespace headless::geometry
