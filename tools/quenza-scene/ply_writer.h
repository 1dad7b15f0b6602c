// SPDX-License-Identifier: MIT
#pragma once

#include "scene/mesh.h"

#include <string>

namespace scene_tool {

/// Writes a mesh as binary little-endian PLY: vertices with normals where the mesh has them; faces as
/// `vertex_indices`, with the first UV set of their corners as `texcoord` (u, v of each corner in turn) and
/// their `material_index`. Throws when the file can't be written; it appears whole or not at all.
void writePly(const std::string& path, const Quenza::Mesh& mesh);

} // namespace scene_tool
