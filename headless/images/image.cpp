// SPDX-License-Identifier: MIT
#include "headless/images/image.h"

#include <algorithm>
#include <new>

namespace headless {

uint8_t toByte(float value) {
    // Truncation of a half more rounds, and is faster than lround for each pixel of an image.
    const float raised = value > 0.0f ? std::min(value, 1.0f) * 255.0f + 0.5f : 0.0f;
    return static_cast<uint8_t>(raised);
}

bool Image::isAllowed(int64_t width, int64_t height) {
    return width > 0 && height > 0 && width <= MAX_SIDE && height <= MAX_SIDE && width * height <= MAX_PIXELS;
}

int32_t Image::init(int64_t width, int64_t height, int32_t depth) {
    *this = Image();
    if (width < 1 || height < 1 || (depth != 24 && depth != 96)) {
        return IMAGERESULT_PARAM_ERROR;
    }
    if (!isAllowed(width, height)) {
        return IMAGERESULT_OUTOFMEMORY;
    }
    const auto count = static_cast<size_t>(width * height * 3);
    try {
        if (depth == 24) {
            bytes_.resize(count);
        } else {
            floats_.resize(count);
        }
    } catch (const std::bad_alloc&) {
        return IMAGERESULT_OUTOFMEMORY;
    }
    width_ = static_cast<int32_t>(width);
    height_ = static_cast<int32_t>(height);
    depth_ = depth;
    return IMAGERESULT_OK;
}

Vector Image::pixel(int32_t x, int32_t y) const {
    const size_t at = offset(x, y);
    if (depth_ == 96) {
        return {floats_[at], floats_[at + 1], floats_[at + 2]};
    }
    return {static_cast<float>(bytes_[at]) / 255.0f, static_cast<float>(bytes_[at + 1]) / 255.0f,
            static_cast<float>(bytes_[at + 2]) / 255.0f};
}

void Image::setPixel(int32_t x, int32_t y, const Vector& colour) {
    const size_t at = offset(x, y);
    const std::array<float, 3> components{colour.x, colour.y, colour.z};
    for (size_t i = 0; i < 3; ++i) {
        if (depth_ == 96) {
            floats_[at + i] = components[i];
        } else {
            bytes_[at + i] = toByte(components[i]);
        }
    }
}

} // namespace headless
