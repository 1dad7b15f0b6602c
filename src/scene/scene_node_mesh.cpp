// SPDX-License-Identifier: MIT
#include "scene/scene_node_mesh.h"

#include "foundation/exceptions.h"
#include "foundation/file_utils.h"
#include "foundation/string_utils.h"
#include "scene/mesh_file.h"
#include "scene/mesh_loader.h"
#include "scene/ostream.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

#include <atomic>
#include <cstdio>

namespace Quenza {

namespace {

std::atomic<u32> next_name_number{0};

/// Another thread or process may make the directory at the same time.
void ensureDirectory(const String& path) {
    if (FileUtils::directoryExists(path))
        return;
    try {
        FileUtils::createDir(path);
    } catch (const FileUtils::FileUtilsExcep& e) {
        if (!FileUtils::directoryExists(path))
            throw QuenzaException(e.message());
    }
}

} // namespace

SceneNodeMesh::SceneNodeMesh() {
    name = "Mesh " + toString(next_name_number++);
}

SceneNodeMesh::~SceneNodeMesh() = default;

Ref<SceneNode> SceneNodeMesh::clone() const {
    std::printf("SceneNodeMesh::clone() not yet implemented");
    return nullptr;
}

bool SceneNodeMesh::doIsEqual(const SceneNode& other) const {
    if (!SceneNode::doIsEqual(other))
        return false;
    std::printf("TODO: IMPLEMENT SceneNodeMesh::doIsEqual()\n");
    return true;
}

void SceneNodeMesh::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) {
    writeOpenTag(stream, depth, "mesh");
    writeUIDAndName(stream, depth + 1);
    writeOptions(stream, depth + 1);
    const String written_path = mesh ? writeMeshFile(options) : path;
    writeOpenTag(stream, depth + 1, "external");
    writePathElement(stream, depth + 2, "path", written_path, options);
    writeCloseTag(stream, depth + 1, "external");
    writeCloseTag(stream, depth, "mesh");
    if (options.release_meshes)
        releaseMesh(written_path);
}

void SceneNodeMesh::releaseMesh(const String& file) {
    scale = scaleOfFile();
    scale_in_mesh = 1.0;
    path = file;
    mesh = nullptr;
}

void SceneNodeMesh::writeOptions(OStream& stream, u32 depth) const {
    writeIntElement(stream, depth, "max_num_subdivisions", max_num_subdivisions);
    writeDoubleElement(stream, depth, "subdivide_pixel_threshold", subdivide_pixel_threshold);
    writeDoubleElement(stream, depth, "subdivide_curvature_threshold", subdivide_curvature_threshold);
    writeDoubleElement(stream, depth, "displacement_error_threshold", displacement_error_threshold);
    writeBoolElement(stream, depth, "view_dependent_subdivision", view_dependent_subdivision);
    writeBoolElement(stream, depth, "subdivision_smoothing", subdivision_smoothing);
    writeBoolElement(stream, depth, "normal_smoothing", normal_smoothing);
    writeBoolElement(stream, depth, "merge_vertices_with_same_pos_and_normal",
                     merge_vertices_with_same_pos_and_normal);
    writeBoolElement(stream, depth, "wrap_u", wrap_u);
    writeBoolElement(stream, depth, "wrap_v", wrap_v);
    writeBoolElement(stream, depth, "view_dependent_subdivision",
                     view_dependent_subdivision); // deliberately again
    writeDoubleElement(stream, depth, "scale", scaleOfFile());
}

double SceneNodeMesh::scaleOfFile() const {
    if (!mesh)
        return scale;
    return scale == scale_in_mesh ? 1.0 : scale / scale_in_mesh; // both may be 0
}

String SceneNodeMesh::writeMeshFile(const XMLWriteOptions& options) const {
    const String directory_name = getMeshDirectoryName(options.scene_path);
    const String relative_path = FileUtils::join(directory_name, getMeshFileName(*mesh));
    ensureDirectory(FileUtils::join(options.base_path, directory_name));
    Mesh::writeToFile(FileUtils::join(options.base_path, relative_path), *mesh);
    return relative_path;
}

void SceneNodeMesh::doVisit(SceneVisitor& visitor) {
    switch (visitor.mode) {
    case SceneVisitor::COLLECT_DEPENDENCIES:
        // Many models show one mesh, and to name its file takes a hash of all of it.
        if (visitor.seen.contains(this))
            break;
        visitor.seen.insert(this, true);
        visitor.dependencies.push_back(visitor.use_stored_paths || !mesh
                                           ? path
                                           : getMeshFilePath(visitor.base_path, visitor.path, *mesh));
        break;
    case SceneVisitor::UPDATE_DEPENDENCIES:
        path = getMappedPath(visitor.path_map, path);
        break;
    case SceneVisitor::LOAD:
        load(visitor);
        break;
    case SceneVisitor::OFFSET_UIDS:
        visitor.offsetUID(uid);
        break;
    default:
        break;
    }
}

void SceneNodeMesh::load(const SceneVisitor& visitor) {
    if (mesh)
        return;
    const Ref<Mesh> loaded = new Mesh;
    getMeshLoader()(FileUtils::join(visitor.base_path, path), *loaded, scale);
    mesh = loaded;
    scale_in_mesh = scale;
}

} // namespace Quenza
