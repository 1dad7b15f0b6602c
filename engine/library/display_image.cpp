// SPDX-License-Identifier: MIT
#include "engine/library/display_image.h"

#include "engine/srgb.h"
#include "foundation/exceptions.h"
#include "foundation/types.h"

#include <algorithm>
#include <cmath>

namespace engine::library {

using Quenza::u32;

namespace {

constexpr float SRGB_GAMMA = 2.2f;

} // namespace

DisplayCurve::DisplayCurve(float gamma)
    : inverse_gamma_(std::abs(gamma - SRGB_GAMMA) < 1e-3f ? 0.0f : 1.0f / gamma) {
    if (!(gamma > 0.0f) || !std::isfinite(gamma)) {
        throw Quenza::QuenzaException("The gamma of the display is not above 0.");
    }
}

float DisplayCurve::operator()(float linear) const {
    return inverse_gamma_ > 0.0f ? std::pow(std::clamp(linear, 0.0f, 1.0f), inverse_gamma_)
                                 : srgbEncode(linear);
}

void writeBytes(const FloatImage& image, const DisplayCurve& curve, Quenza::UInt8Buffer& buffer) {
    const u32 size = buffer.bytesPerPixel() == 4 ? 4 : 3;
    if (buffer.getWidth() != image.width || buffer.getHeight() != image.height ||
        buffer.bytesPerPixel() != size) {
        buffer.resize(image.width, image.height, size);
    }
    for (u32 y = 0; y < image.height; ++y) {
        unsigned char* out = buffer.row(y);
        for (u32 x = 0; x < image.width; ++x, out += size) {
            out[size - 1] = 255;
            std::transform(image.pixel(x, y), image.pixel(x, y) + 3, out,
                           [&curve](float v) { return toByte(curve(v)); });
        }
    }
}

void writeFloats(const FloatImage& image, Quenza::FloatBuffer& buffer) {
    if (buffer.values().empty()) {
        return;
    }
    const u32 size = buffer.numChannels() == 4 ? 4 : 3;
    if (buffer.getWidth() != image.width || buffer.getHeight() != image.height ||
        buffer.numChannels() != size) {
        buffer.resize(image.width, image.height, size);
    }
    for (u32 y = 0; y < image.height; ++y) {
        for (u32 x = 0; x < image.width; ++x) {
            float* const out = buffer.pixel(x, y);
            out[size - 1] = 1.0f;
            std::copy_n(image.pixel(x, y), 3, out);
        }
    }
}

} // namespace engine::library
