// SPDX-License-Identifier: MIT
#pragma once

#include "headless/images/image.h"

#include <filesystem>
#include <string>

namespace headless {

/// Reads an image file: PNG, JPEG, TIFF, OpenEXR, Radiance HDR, BMP and TGA, told by its content. 8 bits a
/// component become a 24 bit image, more of them a 96 bit one. Grey is spread over the three components,
/// alpha is left out and doesn't darken. An ImageResult; after a failure the image is empty. Any thread.
int32_t readImage(const std::filesystem::path& file, Image& image);

/// Reads the alpha of an image file into a grey 24 bit image. IMAGERESULT_WRONGTYPE for an image without
/// alpha, otherwise as `readImage`.
int32_t readAlpha(const std::filesystem::path& file, Image& image);

/// How an image is written.
struct ImageSaving {
    /// An ImageFilter.
    int32_t filter = FILTER_PNG;
    /// 0 to 100, for JPEG.
    int32_t quality = 80;
    /// One channel with the brightness of the colours; three equal ones in HDR files, which know no other,
    /// and in JPEG files where there is no OpenImageIO.
    bool greyscale = false;
};

/// Writes an image file whole or not at all. TIFF, OpenEXR and HDR keep floats, the others take 0 to 1 as 8
/// bits. An ImageResult; `reason` gets the system's words for IMAGERESULT_FILEERROR, where it has some. Any
/// thread.
int32_t writeImage(const std::filesystem::path& file, const Image& image, const ImageSaving& saving,
                   std::string* reason = nullptr);

/// True for an ImageFilter that this build writes.
bool canWrite(int32_t filter);

/// Why no file can be written there, in the system's words; "" when it can. Leaves nothing there.
std::string writingObstacle(const std::filesystem::path& file);

/// A PNG file in memory; "" when there is no image or no memory. Any thread.
std::string encodePng(const Image& image);

} // namespace headless
