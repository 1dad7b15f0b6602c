// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"
#include "foundation/vec.h"

#include <string>
#include <vector>

namespace Quenza {

class Mesh;

/// What a mesh holds. Bounds are in the mesh's space, in metres.
struct MeshSummary {
    std::string name;
    std::string path; ///< Empty for a mesh in the scene itself.
    u64 vertices = 0;
    u64 triangles = 0;
    u64 quads = 0;
    u64 uvs = 0;
    u32 materials = 0;
    u64 memory = 0; ///< Of its arrays, in bytes.
    Vec3f bounds_min{};
    Vec3f bounds_max{};
};

/// Of a mesh on which endOfModel has been called; name and path are left empty.
MeshSummary summariseMesh(const Mesh& mesh);

/// What a mesh file (.obj, .ply, .qzmesh) holds and what is wrong with it.
struct MeshFileSummary {
    MeshSummary mesh;
    std::vector<std::string> material_names;
    bool is_read = false; ///< Else there is but the fault.
    std::string fault;    ///< One line, empty for a sound mesh.
};

/// Never throws for a bad file.
MeshFileSummary summariseMeshFile(const std::string& path);

} // namespace Quenza
