// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

#include <memory>
#include <string>
#include <vector>

namespace headless {

/// Reads a model file (glTF, FBX, OBJ, Collada, 3DS, PLY, STL, ...) into a document of the host's space:
/// left-handed, Y up, centimetres; formats without a unit count as centimetres. Triangles and quads stay,
/// larger faces are split. What a model holds beyond that or is broken in it is left out, with a sentence
/// that begins with the file's name appended to `warnings`. The view looks through the
/// first camera; without one, its own sees the whole model. Throws
/// DocumentError when nothing can be made of the file.
///
/// Images that lie inside the file are written to `textureFolder`, which is made for them; "" leaves them
/// out.
std::unique_ptr<Document> importModel(const std::string& file, std::vector<std::string>& warnings,
                                      const std::string& textureFolder = "");

} // namespace headless
