// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <charconv>

/// Number texts written straight into a buffer, for writers that make millions of them.
namespace Quenza::NumberFormat {

/// Enough for any number below.
inline constexpr u32 MAX_CHARS = 32;

/// Writes the text of Quenza::doubleToString at `out`, which has room for MAX_CHARS; returns its end.
char* writeDouble(char* out, double value);

/// Likewise for Quenza::floatToString.
char* writeFloat(char* out, float value);

/// Decimal digits of any integer; returns the end.
template <class Integer>
char* writeInteger(char* out, Integer value) {
    return std::to_chars(out, out + MAX_CHARS, value).ptr;
}

} // namespace Quenza::NumberFormat
