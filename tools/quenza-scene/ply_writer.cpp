// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/ply_writer.h"

#include "foundation/string_utils.h"
#include "tools/quenza-scene/output_file.h"

#include <cstdint>

namespace scene_tool {

namespace {

using namespace Quenza;

class PlyWriter {
public:
    PlyWriter(const std::string& path, const Mesh& mesh)
        : mesh_(mesh), has_normals_(!mesh.vert_normals.empty()), has_uvs_(mesh.num_uv_mappings != 0),
          file_(path) {}

    void run() {
        writeHeader();
        for (u64 i = 0; i < mesh_.vert_positions.size(); ++i) {
            put(mesh_.vert_positions[i]);
            if (has_normals_)
                put(mesh_.vert_normals[i]);
        }
        for (const MeshTriangle& face : mesh_.triangles)
            putFace(face.vertex_indices, face.uv_indices, 3, face.tri_mat_index);
        for (const MeshQuad& face : mesh_.quads)
            putFace(face.vertex_indices, face.uv_indices, 4, face.mat_index);
        file_.commit();
    }

private:
    void writeHeader() {
        std::string header = "ply\nformat binary_little_endian 1.0\ncomment quenza-scene\nelement vertex " +
                             toString(u64(mesh_.vert_positions.size())) +
                             "\nproperty float x\nproperty float y\nproperty float z\n";
        if (has_normals_)
            header += "property float nx\nproperty float ny\nproperty float nz\n";
        header += "element face " + toString(u64(mesh_.triangles.size() + mesh_.quads.size())) +
                  "\nproperty list uchar uint vertex_indices\n";
        if (has_uvs_)
            header += "property list uchar float texcoord\n";
        file_.write(header + "property uint material_index\nend_header\n");
    }

    /// This machine's order of bytes is the file's, as for mesh files.
    template <class T>
    void put(const T& value) {
        file_.write(std::string_view(reinterpret_cast<const char*>(&value), sizeof value));
    }

    void putFace(const u32* vertices, const u32* uvs, u32 corners, u32 material) {
        put(static_cast<std::uint8_t>(corners));
        for (u32 i = 0; i < corners; ++i)
            put(vertices[i]);
        if (has_uvs_) {
            put(static_cast<std::uint8_t>(2 * corners));
            for (u32 i = 0; i < corners; ++i)
                put(mesh_.uv_pairs[u64(uvs[i]) * mesh_.num_uv_mappings]);
        }
        put(material);
    }

    const Mesh& mesh_;
    bool has_normals_;
    bool has_uvs_;
    OutputFile file_;
};

} // namespace

void writePly(const std::string& path, const Mesh& mesh) {
    PlyWriter(path, mesh).run();
}

} // namespace scene_tool
