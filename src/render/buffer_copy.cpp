// SPDX-License-Identifier: MIT
#include "render/buffer_copy.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

/// Components that only the buffer has, its alpha, are opaque.
void copyLine(const unsigned char* pixels, uint32_t pixelBytes, std::vector<uint8_t>& line,
              size_t bufferPixelBytes) {
    const size_t shared = std::min<size_t>(pixelBytes, bufferPixelBytes);
    for (size_t at = 0; at < line.size(); at += bufferPixelBytes, pixels += pixelBytes) {
        std::copy_n(pixels, shared, line.begin() + static_cast<std::ptrdiff_t>(at));
    }
}

} // namespace

bool copyToBuffer(const Quenza::UInt8Buffer& image, VPBuffer& buffer, const PictureJob& job) {
    const bool fits = job.regionWidth == image.getWidth() && job.regionHeight == image.getHeight() &&
                      job.bufferWidth == buffer.GetBw() && job.bufferHeight == buffer.GetBh();
    const int32_t pixelBytes = buffer.GetBytesPerPixel();
    if (!fits || pixelBytes <= 0) {
        return false;
    }
    const auto bufferPixelBytes = static_cast<size_t>(pixelBytes);
    std::vector<uint8_t> line(static_cast<size_t>(image.getWidth()) * bufferPixelBytes, UINT8_MAX);
    for (uint32_t y = 0; y < image.getHeight(); ++y) {
        copyLine(image.row(y), image.bytesPerPixel(), line, bufferPixelBytes);
        const bool isTaken =
            buffer.SetLine(static_cast<int32_t>(job.regionX), static_cast<int32_t>(job.regionY + y),
                           static_cast<int32_t>(job.regionWidth), line.data());
        if (!isTaken) {
            return false;
        }
    }
    buffer.SetChanged();
    return true;
}
