// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "scene/mesh.h"

namespace Quenza {

/// Fills a new mesh from a model file, its positions multiplied by `scale`, and ends it with endOfModel.
/// Throws QuenzaException. Other formats than the mesh file live above this library, which therefore lets
/// itself be told.
using MeshLoader = void (*)(const String& path, Mesh& mesh, double scale);

/// Null brings back loadMeshFile. To be set before scenes are loaded.
void setMeshLoader(MeshLoader loader);
MeshLoader getMeshLoader();

/// The loader as long as none was set. It knows ".qzmesh" alone, and trusts nothing in such a file.
void loadMeshFile(const String& path, Mesh& mesh, double scale);

} // namespace Quenza
