// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

#include <string>
#include <vector>

namespace headless {

/// Textures that are missing or can't be read, a line each, by material and channel: of the materials that
/// lie on objects, that render settings name, and that these refer to, in the document's order. Only channels
/// that are on and on the material's page count. A texture below other shaders counts as one of the channel
/// that they stand in. Each image is read once, whole.
std::vector<std::string> textureFaults(const Document& document);

} // namespace headless
