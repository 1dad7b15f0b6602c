// SPDX-License-Identifier: MIT
#include "headless/shaders/blend_mode.h"

#include "headless/shaders/shader_ids.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

float screen(float a, float b) {
    return 1.0f - (1.0f - a) * (1.0f - b);
}

float blendComponent(int32_t mode, float base, float over) {
    switch (mode) {
    case BLEND_AVERAGE:
        return 0.5f * (base + over);
    case BLEND_ADD:
        return base + over;
    case BLEND_SUBTRACT:
        return base - over;
    case BLEND_MULTIPLY:
        return base * over;
    case BLEND_SCREEN:
        return screen(base, over);
    case BLEND_LIGHTEN:
        return std::max(base, over);
    case BLEND_DARKEN:
        return std::min(base, over);
    case BLEND_DIFFERENCE:
        return std::abs(base - over);
    case BLEND_OVERLAY:
        return base < 0.5f ? 2.0f * base * over : screen(2.0f * base - 1.0f, over);
    default:
        return over;
    }
}

} // namespace

Vector blend(int32_t mode, const Vector& base, const Vector& over, float strength) {
    const Vector blended(blendComponent(mode, base.x, over.x), blendComponent(mode, base.y, over.y),
                         blendComponent(mode, base.z, over.z));
    return mix(base, blended, strength);
}

} // namespace headless
