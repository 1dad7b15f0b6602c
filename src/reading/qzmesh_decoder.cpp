// SPDX-License-Identifier: MIT
#include "reading/qzmesh_decoder.h"

#include "scene/mesh_loader.h"

namespace Quenza {

void FormatDecoderMeshFile::streamModel(const String& path, Mesh& mesh, double scale) {
    loadMeshFile(path, mesh, scale);
}

} // namespace Quenza
