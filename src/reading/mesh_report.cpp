// SPDX-License-Identifier: MIT
#include "reading/mesh_report.h"

#include "foundation/exceptions.h"
#include "foundation/file_utils.h"
#include "reading/mesh_check.h"
#include "reading/model_loader.h"
#include "scene/mesh.h"

namespace Quenza {

namespace {

u64 memoryOf(const Mesh& mesh) {
    return mesh.vert_positions.size() * sizeof(Vec3f) + mesh.vert_normals.size() * sizeof(Vec3f) +
           mesh.uv_pairs.size() * sizeof(Vec2f) + mesh.triangles.size() * sizeof(MeshTriangle) +
           mesh.quads.size() * sizeof(MeshQuad);
}

} // namespace

MeshSummary summariseMesh(const Mesh& mesh) {
    MeshSummary summary;
    summary.vertices = mesh.vert_positions.size();
    summary.triangles = mesh.triangles.size();
    summary.quads = mesh.quads.size();
    summary.uvs = mesh.num_uv_mappings ? mesh.getNumUVs() : 0;
    summary.materials = mesh.num_materials_referenced;
    summary.memory = memoryOf(mesh);
    summary.bounds_min = mesh.aabb_min;
    summary.bounds_max = mesh.aabb_max;
    return summary;
}

MeshFileSummary summariseMeshFile(const std::string& path) {
    MeshFileSummary summary;
    try {
        if (!FileUtils::fileExists(path))
            throw ModelLoaderExcep("the file is missing");
        Mesh mesh;
        ModelLoader().streamModel(path, mesh, 1.0);
        summary.mesh = summariseMesh(mesh);
        for (const String& name : mesh.used_materials)
            summary.material_names.push_back(name.toStdString());
        summary.is_read = true;
        summary.fault = checkMesh(mesh);
    } catch (const MessageExcep& excep) {
        summary.fault = excep.what();
    }
    summary.mesh.path = path;
    return summary;
}

} // namespace Quenza
