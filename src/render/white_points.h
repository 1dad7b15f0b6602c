// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// CIE 1931 x, y.
struct Chromaticity {
    float x;
    float y;
};

/// The white point of an entry of the tone mapping dialog's list; that of D65 for any other number.
Chromaticity whitePointOfEntry(int32_t entry);
/// The entry with exactly this white point, or 0.
int32_t entryOfWhitePoint(const Chromaticity& white);
