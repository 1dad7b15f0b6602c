// SPDX-License-Identifier: MIT
#pragma once

#include "headless/images/image_files.h"

namespace headless {

/// For images that take long to make: throws HostError when one can't be written there.
void requireWritable(const std::filesystem::path& file);

/// Throws HostError when the image can't be written.
void saveImage(const std::filesystem::path& file, const Image& image, const ImageSaving& saving);

} // namespace headless
