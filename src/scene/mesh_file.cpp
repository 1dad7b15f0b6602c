// SPDX-License-Identifier: MIT
#include "scene/mesh_file.h"

#include "foundation/file_utils.h"
#include "foundation/string_utils.h"

namespace Quenza {

String getMeshFileName(const Mesh& mesh) {
    u64 num_bytes = 0;
    const u32 checksum = mesh.checksum(num_bytes);
    return "mesh_" + toString(checksum) + "_" + toString(u32(num_bytes)) + ".qzmesh";
}

String getMeshDirectoryName(const String& scene_path) {
    return FileUtils::removeExtension(FileUtils::getFilename(scene_path)) + "_meshes";
}

String getMeshDirectory(const String& base_path, const String& scene_path) {
    return FileUtils::join(base_path, getMeshDirectoryName(scene_path));
}

String getMeshFilePath(const String& base_path, const String& scene_path, const Mesh& mesh) {
    return FileUtils::join(getMeshDirectory(base_path, scene_path), getMeshFileName(mesh));
}

} // namespace Quenza
