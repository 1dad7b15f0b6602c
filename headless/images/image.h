// SPDX-License-Identifier: MIT
#pragma once

#include "host/bitmap.h"

#include <array>
#include <vector>

namespace headless {

/// An image in memory: what a BaseBitmap points to. The first row is the topmost; pixels have red, green and
/// blue, of 8 bits each (24 bits a pixel) or as floats of 32 bits (96).
class Image {
public:
    /// Limits of an image, whatever a file says. A float image of that many pixels takes 1.5 GiB.
    static constexpr int64_t MAX_SIDE = 65536;
    static constexpr int64_t MAX_PIXELS = int64_t{1} << 27;

    /// Makes it a black image. An ImageResult; after a failure it's empty.
    int32_t init(int64_t width, int64_t height, int32_t depth);
    static bool isAllowed(int64_t width, int64_t height);

    int32_t width() const { return width_; }
    int32_t height() const { return height_; }
    /// Bits a pixel: 24 or 96, 0 while it's empty.
    int32_t depth() const { return depth_; }
    bool contains(int32_t x, int32_t y) const { return x >= 0 && y >= 0 && x < width_ && y < height_; }

    /// Three components a pixel, row by row. The one that the depth doesn't choose is null.
    uint8_t* bytes() { return depth_ == 24 ? bytes_.data() : nullptr; }
    const uint8_t* bytes() const { return depth_ == 24 ? bytes_.data() : nullptr; }
    float* floats() { return depth_ == 96 ? floats_.data() : nullptr; }
    const float* floats() const { return depth_ == 96 ? floats_.data() : nullptr; }

    /// 0 to 1 for bytes. The place must be inside.
    Vector pixel(int32_t x, int32_t y) const;
    /// Bytes take 0 to 1, rounded; floats any value. The place must be inside.
    void setPixel(int32_t x, int32_t y, const Vector& colour);

private:
    size_t offset(int32_t x, int32_t y) const {
        return (static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(x)) * 3;
    }

    int32_t width_ = 0;
    int32_t height_ = 0;
    int32_t depth_ = 0;
    std::vector<uint8_t> bytes_;
    std::vector<float> floats_;
};

/// 0 to 1 as a byte; what isn't a number is 0.
uint8_t toByte(float value);

inline Image* fromHost(const BaseBitmap* bitmap) {
    return reinterpret_cast<Image*>(const_cast<BaseBitmap*>(bitmap));
}

} // namespace headless
