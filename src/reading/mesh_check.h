// SPDX-License-Identifier: MIT
#pragma once

#include "scene/mesh.h"

#include <string>

namespace Quenza {

/// Empty when the mesh is sound: indices lie within their arrays, positions, normals and UVs are finite, and
/// faces have a material. Else one line that names the first bad element.
std::string checkMesh(const Mesh& mesh);

} // namespace Quenza
