// SPDX-License-Identifier: MIT
#pragma once

#include "engine/images/image_file.h"

#include <memory>
#include <string>
#include <string_view>

namespace engine {

bool isTIFF(std::string_view bytes);

/// The first image of a TIFF file. Grey and RGB of 16 bits or of floats, in one plane and in strips, keep
/// their depth; everything else becomes 8 bits, and alpha then darkens what it hides. Null with the reason in
/// `fault` when it can't be read.
std::shared_ptr<TexelImage> decodeTIFF(std::string_view bytes, std::string& fault);

} // namespace engine
