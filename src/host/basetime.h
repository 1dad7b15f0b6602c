// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// A time in seconds, held as a fraction.
class BaseTime {
public:
    constexpr BaseTime() = default;
    constexpr explicit BaseTime(double seconds) : numerator_(seconds) {}
    constexpr BaseTime(double numerator, double denominator)
        : numerator_(numerator), denominator_(denominator != 0.0 ? denominator : 1.0) {}

    constexpr double Get() const { return numerator_ / denominator_; }
    constexpr double GetNumerator() const { return numerator_; }
    constexpr double GetDenominator() const { return denominator_; }

    constexpr bool operator==(const BaseTime& other) const { return Get() == other.Get(); }
    constexpr bool operator<(const BaseTime& other) const { return Get() < other.Get(); }

private:
    double numerator_ = 0.0;
    double denominator_ = 1.0;
};
