// SPDX-License-Identifier: MIT
#pragma once

#include <assimp/types.h>
#include <string>

namespace headless {

/// A text of a model as valid UTF-8: other bytes become U+FFFD, the replacement character.
std::string modelText(const aiString& text);

} // namespace headless
