// SPDX-License-Identifier: MIT
#pragma once

#include "headless/images/image.h"

#include <vector>

namespace headless {

/// Carries the colours of an image on beyond the borders of what is covered: each of up to `width` rings of
/// pixels gets the mean of its neighbours further in. `covered` has a byte for each pixel, 1 where it's
/// covered. The image is one of 24 bits.
void addPixelBorder(Image& image, std::vector<uint8_t> covered, int32_t width);

} // namespace headless
