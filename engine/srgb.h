// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>

namespace engine {

// The transfer functions of sRGB (IEC 61966-2-1) between 0 and 1; values beyond are clamped, NaN is 0.

inline float srgbEncode(float linear) {
    const float v = linear > 0.0f ? std::min(linear, 1.0f) : 0.0f;
    return v <= 0.0031308f ? 12.92f * v : 1.055f * std::pow(v, 1.0f / 2.4f) - 0.055f;
}

inline float srgbDecode(float encoded) {
    const float v = encoded > 0.0f ? std::min(encoded, 1.0f) : 0.0f;
    return v <= 0.04045f ? v / 12.92f : std::pow((v + 0.055f) / 1.055f, 2.4f);
}

inline unsigned char toByte(float encoded) {
    return static_cast<unsigned char>(std::lround(encoded * 255.0f));
}

} // namespace engine
