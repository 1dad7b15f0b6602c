// SPDX-License-Identifier: MIT
#pragma once

#include "scene/mesh.h"

#include <string>

namespace scene_tool {

/// Writes a mesh as Wavefront OBJ text: positions, normals, the first UV set, and the faces by material, each
/// material opened by "usemtl". Materials without faces are named too, so that reading the file gives the
/// same indices. Throws when the file can't be written; it appears whole or not at all.
void writeObj(const std::string& path, const Quenza::Mesh& mesh);

} // namespace scene_tool
