// SPDX-License-Identifier: MIT
#include "scene/mesh_loader.h"

#include "foundation/exceptions.h"
#include "foundation/string_utils.h"

#include <atomic>

namespace Quenza {

namespace {

constexpr u64 MIN_PATH_CHARS = 4;

std::atomic<MeshLoader> mesh_loader{loadMeshFile};

} // namespace

void setMeshLoader(MeshLoader loader) {
    mesh_loader = loader ? loader : loadMeshFile;
}

MeshLoader getMeshLoader() {
    return mesh_loader;
}

void loadMeshFile(const String& path, Mesh& mesh, double scale) {
    if (path.size() < MIN_PATH_CHARS)
        throw QuenzaException("filename too short: '" + path + "'");
    const std::string extension = toLowerCase(path.view().substr(path.view().rfind('.') + 1));
    if (extension != "qzmesh")
        throw QuenzaException("key '" + extension + "' not found");
    Mesh::readCheckedFromFile(path, mesh, f32(scale));
}

} // namespace Quenza
