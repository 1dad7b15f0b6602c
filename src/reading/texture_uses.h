// SPDX-License-Identifier: MIT
#pragma once

#include "scene/material.h"

#include <string>
#include <vector>

namespace Quenza {

/// A texture of a material and what shows it.
struct TextureUse {
    std::string path;
    /// Elements of the parameters that index it, "albedo, bump"; "" for one that shaders alone can see.
    std::string channels;
};

/// The textures of a material in their order.
std::vector<TextureUse> textureUses(Material& material);

} // namespace Quenza
