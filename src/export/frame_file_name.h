// SPDX-License-Identifier: MIT
#pragma once

#include "host/string.h"

#include <cstdio>

/// The name of a frame's file: `base`, for a frame of an animation "_frame" and six digits or more, `suffix`.
inline String frameFileName(const String& base, int32_t frame, bool isAnimation, const String& suffix) {
    if (!isAnimation) {
        return base + suffix;
    }
    char number[32];
    std::snprintf(number, sizeof number, "_frame%06d", frame);
    return base + number + suffix;
}
