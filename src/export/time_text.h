// SPDX-License-Identifier: MIT
#pragma once

#include "host/general.h"

#include <cmath>

/// Seconds since the reading `start` of the host's timer, which may have wrapped around.
inline float secondsSince(uint32_t start) {
    return static_cast<float>(GeGetMilliSeconds() - start) * 0.001f;
}

/// Seconds with three decimals.
inline String secondsText(float seconds) {
    return RealToString(static_cast<double>(seconds), -1, 3, '0');
}

/// "1.234 s"
inline String shortTimeText(uint32_t start) {
    return secondsText(secondsSince(start)) + " s";
}

/// "2 m, 1.234 s"
inline String longTimeText(float seconds) {
    const double minutes = std::floor(static_cast<double>(seconds * 0.016666668f));
    const double rest = static_cast<double>(seconds) - 60.0 * minutes;
    return LongToString(static_cast<int64_t>(minutes)) + " m, " + RealToString(rest, -1, 3, '0') + " s";
}
