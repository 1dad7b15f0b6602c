// SPDX-License-Identifier: MIT
#include "reading/mesh_check.h"

#include <cmath>

namespace Quenza {

namespace {

std::string checkVectors(const Vector<Vec3f>& vectors, const char* what) {
    for (u64 i = 0; i < vectors.size(); ++i) {
        const Vec3f& v = vectors[i];
        if (!std::isfinite(v.x) || !std::isfinite(v.y) || !std::isfinite(v.z)) {
            return std::string(what) + " " + std::to_string(i) + " isn't finite";
        }
    }
    return {};
}

template <size_t corners>
bool allBelow(const u32 (&indices)[corners], u64 limit) {
    for (const u32 index : indices) {
        if (index >= limit) {
            return false;
        }
    }
    return true;
}

template <typename Face>
std::string checkFaces(const Vector<Face>& faces, const char* what, u64 vertices, u64 uvs, bool has_uvs) {
    for (u64 i = 0; i < faces.size(); ++i) {
        if (!allBelow(faces[i].vertex_indices, vertices)) {
            return std::string(what) + " " + std::to_string(i) + " has a vertex index out of bounds";
        }
        if (has_uvs && !allBelow(faces[i].uv_indices, uvs)) {
            return std::string(what) + " " + std::to_string(i) + " has a UV index out of bounds";
        }
    }
    return {};
}

} // namespace

std::string checkMesh(const Mesh& mesh) {
    const bool has_uvs = mesh.num_uv_mappings != 0;
    const u64 uvs = has_uvs ? mesh.uv_pairs.size() / mesh.num_uv_mappings : 0;
    std::string fault = checkVectors(mesh.vert_positions, "vertex");
    if (fault.empty()) {
        fault = checkVectors(mesh.vert_normals, "normal");
    }
    if (fault.empty()) {
        fault = checkFaces(mesh.triangles, "triangle", mesh.vert_positions.size(), uvs, has_uvs);
    }
    if (fault.empty()) {
        fault = checkFaces(mesh.quads, "quad", mesh.vert_positions.size(), uvs, has_uvs);
    }
    return fault;
}

} // namespace Quenza
