// SPDX-License-Identifier: MIT
#pragma once

#include "scene/mesh.h"

#include <string>

namespace Quenza {

/// Empty when the mesh is sound: indices lie within their arrays and positions and normals are finite. Else
/// one line that names the first bad element.
std::string checkMesh(const Mesh& mesh);

} // namespace Quenza
