// SPDX-License-Identifier: MIT
#include "headless/render/render_image.h"

#include "headless/runtime/host_error.h"

#include <algorithm>
#include <string>
#include <utility>

namespace headless {

RenderImage::RenderImage(int32_t width, int32_t height, std::function<void()> onChanged)
    : width_(width), height_(height), onChanged_(std::move(onChanged)) {
    constexpr int32_t BITS = 8 * BYTES_PER_PIXEL;
    if (image_.init(width, height, BITS) != IMAGERESULT_OK) {
        throw HostError("No image can have " + std::to_string(width) + " by " + std::to_string(height) +
                        " pixels");
    }
}

bool RenderImage::setLine(int32_t x, int32_t y, int32_t count, const uint8_t* pixels) {
    if (!pixels || x < 0 || y < 0 || count < 0 || y >= height_ || x > width_ || count > width_ - x) {
        return false;
    }
    const std::lock_guard lock(mutex_);
    const size_t first = (static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x));
    std::copy_n(pixels, static_cast<size_t>(count) * BYTES_PER_PIXEL,
                image_.bytes() + first * BYTES_PER_PIXEL);
    return true;
}

void RenderImage::setChanged() {
    {
        const std::lock_guard lock(mutex_);
        ++changes_;
    }
    if (onChanged_) {
        onChanged_();
    }
}

uint64_t RenderImage::changes() const {
    const std::lock_guard lock(mutex_);
    return changes_;
}

uint64_t RenderImage::copyTo(Image& image) const {
    const std::lock_guard lock(mutex_);
    image = image_;
    return changes_;
}

} // namespace headless
