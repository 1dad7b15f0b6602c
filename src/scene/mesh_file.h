// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "scene/mesh.h"

/// Names of the mesh files that go with a scene.
namespace Quenza {

/// "mesh_<checksum>_<bytes>.qzmesh", the bytes modulo 2^32. This hashes the whole mesh.
String getMeshFileName(const Mesh& mesh);

/// Name of the folder beside the scene file: "<scene file without extension>_meshes".
String getMeshDirectoryName(const String& scene_path);

/// That folder below `base_path`.
String getMeshDirectory(const String& base_path, const String& scene_path);

/// The mesh's file in that folder. This hashes the whole mesh.
String getMeshFilePath(const String& base_path, const String& scene_path, const Mesh& mesh);

} // namespace Quenza
