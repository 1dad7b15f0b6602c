// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

#include <memory>
#include <string>

namespace headless {

/// Reads a model file (glTF, FBX, OBJ, Collada, 3DS, PLY, STL, ...) into a document of the host's space:
/// left-handed, Y up, centimetres. Triangles and quads stay, larger faces are split. Throws DocumentError.
std::unique_ptr<Document> importModel(const std::string& file);

} // namespace headless
