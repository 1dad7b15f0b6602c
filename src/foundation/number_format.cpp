// SPDX-License-Identifier: MIT
#include "foundation/number_format.h"

#include <cmath>
#include <cstring>

namespace Quenza::NumberFormat {

namespace {

// Between these powers of ten a number is written without an exponent: 1e-6 is "0.000001", 1e21 "1e21".
constexpr int LOWEST_FIXED_EXPONENT = -6;
constexpr int FIXED_EXPONENT_END = 21;

/// Whole numbers below 2^53 have no shorter text than their digits: no other number lies within half a unit.
template <class Number>
bool writeWhole(char*& out, Number value, Number limit) {
    if (!(value > -limit && value < limit))
        return false;
    const i64 whole = static_cast<i64>(value);
    if (static_cast<Number>(whole) != value)
        return false;
    out = writeInteger(out, whole);
    return true;
}

char* writeZeros(char* out, int count) {
    std::memset(out, '0', static_cast<std::size_t>(count));
    return out + count;
}

char* writeDigits(char* out, const char* digits, int count) {
    std::memcpy(out, digits, static_cast<std::size_t>(count));
    return out + count;
}

/// `count` digits, the first of which stands for 10^exponent.
char* writeFixed(char* out, const char* digits, int count, int exponent) {
    if (exponent < 0) {
        *out++ = '0';
        *out++ = '.';
        return writeDigits(writeZeros(out, -exponent - 1), digits, count);
    }
    const int whole = exponent + 1;
    if (count <= whole)
        return writeZeros(writeDigits(out, digits, count), whole - count);
    out = writeDigits(out, digits, whole);
    *out++ = '.';
    return writeDigits(out, digits + whole, count - whole);
}

char* writeScientific(char* out, const char* digits, int count, int exponent) {
    *out++ = digits[0];
    if (count > 1) {
        *out++ = '.';
        out = writeDigits(out, digits + 1, count - 1);
    }
    *out++ = 'e';
    return writeInteger(out, exponent);
}

/// The fewest digits that tell the number from its neighbours. The standard library finds them three times
/// as fast as double-conversion, whose form this text has to the letter; only its layout is missing there.
template <class Number>
char* writeShortest(char* out, Number value) {
    if (std::isnan(value))
        return writeDigits(out, "NaN", 3);
    if (std::signbit(value))
        *out++ = '-';
    if (std::isinf(value))
        return writeDigits(out, "Inf", 3);
    char text[MAX_CHARS];
    const char* end =
        std::to_chars(text, text + sizeof text, std::abs(value), std::chars_format::scientific).ptr;
    // "d.ddde-dd" or "d.ddde-ddd": moving the first digit over the point leaves the digits in a row.
    const char* exponent_mark = end[-4] == 'e' ? end - 4 : end - 5;
    const char* digits = text;
    int count = 1;
    if (text[1] == '.') {
        text[1] = text[0];
        digits = text + 1;
        count = static_cast<int>(exponent_mark - digits);
    }
    int exponent = 0;
    for (const char* digit = exponent_mark + 2; digit < end; ++digit)
        exponent = exponent * 10 + (*digit - '0');
    if (exponent_mark[1] == '-')
        exponent = -exponent;
    return exponent >= LOWEST_FIXED_EXPONENT && exponent < FIXED_EXPONENT_END
               ? writeFixed(out, digits, count, exponent)
               : writeScientific(out, digits, count, exponent);
}

} // namespace

char* writeDouble(char* out, double value) {
    if (writeWhole(out, value, 9007199254740992.0))
        return out;
    return writeShortest(out, value);
}

char* writeFloat(char* out, float value) {
    if (writeWhole(out, value, 16777216.0f))
        return out;
    return writeShortest(out, value);
}

} // namespace Quenza::NumberFormat
