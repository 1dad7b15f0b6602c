// SPDX-License-Identifier: MIT
#include "reading/mesh_check.h"

#include <cmath>
#include <limits>

namespace Quenza {

namespace {

/// With it, the number of a mesh's materials can't be told.
constexpr u32 NO_MATERIAL = std::numeric_limits<u32>::max();

std::string checkVectors(const Vector<Vec3f>& vectors, const char* what) {
    for (u64 i = 0; i < vectors.size(); ++i) {
        const Vec3f& v = vectors[i];
        if (!std::isfinite(v.x) || !std::isfinite(v.y) || !std::isfinite(v.z)) {
            return std::string(what) + " " + std::to_string(i) + " isn't finite";
        }
    }
    return {};
}

std::string checkUVs(const Vector<Vec2f>& pairs, u64 sets) {
    for (u64 i = 0; i < pairs.size(); ++i) {
        if (!std::isfinite(pairs[i].x) || !std::isfinite(pairs[i].y)) {
            return "UV " + std::to_string(i / sets) + " isn't finite";
        }
    }
    return {};
}

u32 materialOf(const MeshTriangle& triangle) {
    return triangle.tri_mat_index;
}
u32 materialOf(const MeshQuad& quad) {
    return quad.mat_index;
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
        if (materialOf(faces[i]) == NO_MATERIAL) {
            return std::string(what) + " " + std::to_string(i) + " has no material: its index is " +
                   std::to_string(NO_MATERIAL);
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
        fault = has_uvs ? checkUVs(mesh.uv_pairs, mesh.num_uv_mappings) : "";
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
