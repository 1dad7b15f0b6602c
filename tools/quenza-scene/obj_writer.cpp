// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/obj_writer.h"

#include "foundation/string_utils.h"
#include "tools/quenza-scene/output_file.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <vector>

namespace scene_tool {

namespace {

using namespace Quenza;

/// Hands out the names of materials, in the order of their indices and all different. A name is what stands
/// behind "usemtl" up to the end of the line, without blanks around it.
class MaterialNames {
public:
    explicit MaterialNames(const Mesh& mesh) : mesh_(mesh) {}

    std::string next(u32 index) {
        std::string name =
            index < mesh_.used_materials.size() ? mesh_.used_materials[index].toStdString() : "";
        const auto breaks = [](unsigned char c) { return c < ' ' || c == '\\'; };
        std::replace_if(name.begin(), name.end(), breaks, '_');
        name.erase(0, name.find_first_not_of(' '));
        name.erase(name.find_last_not_of(' ') + 1);
        if (name.empty())
            name = "material_" + toString(index);
        while (!given_.insert(name).second)
            name += "_" + toString(index);
        return name;
    }

private:
    const Mesh& mesh_;
    std::set<std::string> given_;
};

class ObjWriter {
public:
    ObjWriter(const std::string& path, const Mesh& mesh) : mesh_(mesh), file_(path) {}

    void run() {
        for (const Vec3f& p : mesh_.vert_positions)
            file_.write("v " + numbers({p.x, p.y, p.z}));
        for (const Vec3f& n : mesh_.vert_normals)
            file_.write("vn " + numbers({n.x, n.y, n.z}));
        const u64 sets = mesh_.num_uv_mappings;
        for (u64 i = 0; sets != 0 && i < mesh_.uv_pairs.size(); i += sets)
            file_.write("vt " + numbers({mesh_.uv_pairs[i].x, mesh_.uv_pairs[i].y}));
        writeFaces();
        file_.commit();
    }

private:
    static std::string numbers(std::initializer_list<float> values) {
        std::string text;
        for (const float value : values)
            text += (text.empty() ? "" : " ") + floatToString(value);
        return text + "\n";
    }

    /// Polygons are numbered through: triangles, then quads.
    u32 materialOf(u64 polygon) const {
        const u64 triangles = mesh_.triangles.size();
        return polygon < triangles ? mesh_.triangles[polygon].tri_mat_index
                                   : mesh_.quads[polygon - triangles].mat_index;
    }

    void writeFaces() {
        std::vector<u64> order(mesh_.triangles.size() + mesh_.quads.size());
        std::iota(order.begin(), order.end(), u64(0));
        std::stable_sort(order.begin(), order.end(),
                         [&](u64 a, u64 b) { return materialOf(a) < materialOf(b); });
        MaterialNames names(mesh_);
        const u32 named = static_cast<u32>(mesh_.used_materials.size());
        u32 opened = 0; // materials below it have their line
        const auto openUpTo = [&](u32 end) {
            while (opened < end)
                file_.write("usemtl " + names.next(opened++) + "\n");
        };
        for (const u64 polygon : order) {
            const u32 material = materialOf(polygon);
            openUpTo(std::min(material + 1, named));
            // A mesh may have more indices than names. Without any name the reader calls index 0 by its own.
            if (material >= std::max(opened, named) && (material > 0 || named > 0)) {
                opened = material;
                openUpTo(material + 1);
            }
            writeFace(polygon);
        }
        openUpTo(named);
    }

    void writeFace(u64 polygon) {
        const u64 triangles = mesh_.triangles.size();
        if (polygon < triangles) {
            const MeshTriangle& face = mesh_.triangles[polygon];
            writeCorners(face.vertex_indices, face.uv_indices, 3);
        } else {
            const MeshQuad& face = mesh_.quads[polygon - triangles];
            writeCorners(face.vertex_indices, face.uv_indices, 4);
        }
    }

    void writeCorners(const u32* vertices, const u32* uvs, u32 count) {
        const bool has_uvs = mesh_.num_uv_mappings != 0;
        const bool has_normals = !mesh_.vert_normals.empty();
        std::string line = "f";
        for (u32 i = 0; i < count; ++i) {
            const std::string vertex = toString(u64(vertices[i]) + 1);
            line += " " + vertex;
            if (has_uvs)
                line += "/" + toString(u64(uvs[i]) + 1);
            if (has_normals)
                line += (has_uvs ? "/" : "//") + vertex;
        }
        file_.write(line + "\n");
    }

    const Mesh& mesh_;
    OutputFile file_;
};

} // namespace

void writeObj(const std::string& path, const Mesh& mesh) {
    ObjWriter(path, mesh).run();
}

} // namespace scene_tool
