// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

#include <cstdint>

namespace headless {

/// `over` laid over `base` by a BlendMode, `strength` 0 to 1 of it. An unknown mode is the normal one.
Vector blend(int32_t mode, const Vector& base, const Vector& over, float strength);

/// How bright the eye sees a colour.
constexpr float brightness(const Vector& colour) {
    return 0.299f * colour.x + 0.587f * colour.y + 0.114f * colour.z;
}

constexpr Vector mix(const Vector& a, const Vector& b, float t) {
    return a * (1.0f - t) + b * t;
}

} // namespace headless
