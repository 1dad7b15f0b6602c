// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"
#include "foundation/vec.h"
#include "scene/mesh.h"

#include <limits>

namespace Quenza {

/// What a mesh is asked about all its vertices and faces: bounds, and the largest indices. Arrays are taken
/// in pieces of any size and order, so that a reader can hand them over while they are in the processor's
/// cache, and threads can share the work.
class MeshMeasure {
public:
    void takePositions(const Vec3f* positions, u64 count);
    void takeFaces(const MeshTriangle* triangles, u64 count);
    void takeFaces(const MeshQuad* quads, u64 count);
    void take(const MeshMeasure& other);

    /// Numbers that are none are passed over.
    Vec3f min = {INFINITE, INFINITE, INFINITE};
    Vec3f max = {-INFINITE, -INFINITE, -INFINITE};
    f32 squared_radius = 0; ///< About the origin.
    u32 largest_vertex = 0;
    u32 largest_uv = 0;
    u32 largest_material = 0;

private:
    static constexpr f32 INFINITE = std::numeric_limits<f32>::infinity();
};

/// All of the mesh, on all processors where it is large.
MeshMeasure measureMesh(const Mesh& mesh);

} // namespace Quenza
