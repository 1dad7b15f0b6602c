// SPDX-License-Identifier: MIT
#include "foundation/trigonometry.h"

#ifdef __MINGW32__

namespace Quenza {

namespace {

/// What is left of an angle beyond a multiple of a quarter turn: at most an eighth of a turn, either way.
struct Remainder {
    long double angle;
    int quarter; ///< 0 to 3
};

/// The C library leaves this to the processor, whose pi has 66 bits: near its multiples half of the digits
/// would be wrong. The first two parts of a quarter turn have 33 bits each, so that their multiples are exact
/// (Cody and Waite, "Software Manual for the Elementary Functions", 1980).
Remainder reduce(double angle) {
    constexpr long double FIRST = 1.57079632673412561417e+00;
    constexpr long double SECOND = 6.07710050630396597660e-11;
    constexpr long double THIRD = 2.0222662487959507324e-21L;
    constexpr long double QUARTER = 1.570796326794896619231L;
    const long double count = std::nearbyint(static_cast<long double>(angle) / QUARTER);
    const long double rest = static_cast<long double>(angle) - count * FIRST - count * SECOND - count * THIRD;
    return {rest, static_cast<int>(static_cast<long long>(count) & 3)};
}

double sineOf(const Remainder& remainder) {
    switch (remainder.quarter) {
    case 0:
        return static_cast<double>(std::sin(remainder.angle));
    case 1:
        return static_cast<double>(std::cos(remainder.angle));
    case 2:
        return static_cast<double>(-std::sin(remainder.angle));
    default:
        return static_cast<double>(-std::cos(remainder.angle));
    }
}

/// Beyond it a multiple of the first part isn't exact, nor is any angle that an artist means.
constexpr double LARGEST = 1e9;

} // namespace

double sine(double angle) {
    return std::abs(angle) < LARGEST ? sineOf(reduce(angle)) : std::sin(angle);
}

double cosine(double angle) {
    if (!(std::abs(angle) < LARGEST)) {
        return std::cos(angle);
    }
    const Remainder remainder = reduce(angle);
    return sineOf({remainder.angle, (remainder.quarter + 1) & 3});
}

} // namespace Quenza

#endif
