// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <memory>
#include <string>
#include <vector>

namespace engine {

/// Rows from the top, three floats a pixel.
struct FloatImage {
    FloatImage() = default;
    FloatImage(Quenza::u32 w, Quenza::u32 h) : width(w), height(h), rgb(size_t(w) * h * 3) {}

    float* pixel(Quenza::u32 x, Quenza::u32 y) { return &rgb[(size_t(y) * width + x) * 3]; }
    const float* pixel(Quenza::u32 x, Quenza::u32 y) const { return &rgb[(size_t(y) * width + x) * 3]; }

    Quenza::u32 width = 0;
    Quenza::u32 height = 0;
    std::vector<float> rgb;
};

/// An image in the depth of its file: 8 bits, or floats for whatever is deeper. Rows from the top; one
/// channel for grey, else three.
struct TexelImage {
    Quenza::u32 width = 0;
    Quenza::u32 height = 0;
    Quenza::u32 channels = 3;
    std::vector<unsigned char> bytes; ///< One of the two is empty.
    std::vector<float> floats;
};

/// Reads a PNG, JPEG, TIFF, TGA, BMP, HDR or EXR file, told apart by their content. Files of 8 or 16 bits
/// have their stored values as 0 to 1, or 0 to 255, with no gamma undone; alpha is dropped.
///
/// Null with the reason in `fault` when there is no such file, it is damaged, or it claims more pixels than
/// its bytes can hold or than MAX_IMAGE_PIXELS.
std::shared_ptr<const TexelImage> loadTexels(const std::string& path, std::string& fault);

/// The same with grey spread over the three channels.
std::shared_ptr<const FloatImage> loadImage(const std::string& path, std::string& fault);

/// False, with the reason in `fault`, for an image that is refused before it is decoded.
bool isPlausibleSize(Quenza::u64 width, Quenza::u64 height, Quenza::u64 file_size, std::string& fault);

inline constexpr Quenza::u64 MAX_IMAGE_PIXELS = Quenza::u64(1) << 26;

} // namespace engine
