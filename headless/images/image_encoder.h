// SPDX-License-Identifier: MIT
#pragma once

#include "headless/images/image_files.h"

#include <vector>

namespace headless {

/// Appends the bytes of an image file. IMAGERESULT_PARAM_ERROR without an image and for a format that isn't
/// written, otherwise another ImageResult; after a failure the bytes are of no use. Any thread.
int32_t encodeImage(const Image& image, const ImageSaving& saving, std::vector<unsigned char>& bytes);

} // namespace headless
