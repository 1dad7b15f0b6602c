// SPDX-License-Identifier: MIT
#pragma once

#include "reading/model_loader.h"
#include "support/temp_dir.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Quenza {

/// The mesh's content in lines, numbers as streams have them. Materials, vertices with their normals, UV
/// entries and faces; UV indices only where the mesh has UVs.
inline std::string meshText(const Mesh& mesh) {
    std::ostringstream out;
    for (const String& name : mesh.used_materials)
        out << "material " << name.view() << '\n';
    for (u64 i = 0; i < mesh.vert_positions.size(); ++i) {
        const Vec3f& p = mesh.vert_positions[i];
        out << "v " << p.x << ' ' << p.y << ' ' << p.z;
        if (!mesh.vert_normals.empty()) {
            const Vec3f& n = mesh.vert_normals[i];
            out << " n " << n.x << ' ' << n.y << ' ' << n.z;
        }
        out << '\n';
    }
    for (u64 i = 0; i < mesh.uv_pairs.size(); ++i)
        out << (i % mesh.num_uv_mappings == 0 ? "uv " : "   ") << mesh.uv_pairs[i].x << ' '
            << mesh.uv_pairs[i].y << '\n';
    const auto face = [&](const char* word, const auto& v, const auto& uv, u32 material) {
        out << word;
        for (const u32 index : v)
            out << ' ' << index;
        if (mesh.num_uv_mappings != 0)
            out << " uv";
        for (const u32 index : uv)
            if (mesh.num_uv_mappings != 0)
                out << ' ' << index;
            else
                EXPECT_EQ(index, 0u);
        out << " m " << material << '\n';
    };
    for (const MeshTriangle& t : mesh.triangles)
        face("triangle", t.vertex_indices, t.uv_indices, t.tri_mat_index);
    for (const MeshQuad& q : mesh.quads)
        face("quad", q.vertex_indices, q.uv_indices, q.mat_index);
    return out.str();
}

/// Reads files through the loader.
class ModelFilesTest : public testing::Test {
protected:
    /// meshText of the model, or the message of the failure behind "error: ".
    std::string load(const String& path, double scale = 1) {
        Mesh mesh;
        const std::string error =
            thrownMessage<ModelLoaderExcep>([&] { ModelLoader().streamModel(path, mesh, scale); });
        if (error != "no exception")
            return "error: " + error;
        EXPECT_GT(mesh.num_materials_referenced, 0u) << "endOfModel was not called";
        return meshText(mesh);
    }
    std::string loadBytes(const std::string& name, const std::string& bytes, double scale = 1) {
        writeBytes(dir / name, bytes);
        return load(dir / name, scale);
    }

    const TempDir dir;
};

} // namespace Quenza
