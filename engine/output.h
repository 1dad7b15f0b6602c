// SPDX-License-Identifier: MIT
#pragma once

#include "engine/images/image_file.h"
#include "foundation/string.h"
#include "foundation/types.h"

#include <string>
#include <vector>

namespace engine {

// The writers replace a file as a whole, and return "" or the reason for a failure.

/// `rgb8`: sRGB, three bytes a pixel, rows from the top.
std::string writePNG(const std::string& path, Quenza::u32 width, Quenza::u32 height,
                     const std::vector<unsigned char>& rgb8);

/// Single floats in the channels R, G and B.
std::string writeEXR(const std::string& path, const FloatImage& image);

/// The layers in the chunk form of MasterBuffer; there is a name for each.
std::string writeQZI(const std::string& path, const std::vector<FloatImage>& layers,
                     const std::vector<std::string>& names);

} // namespace engine
