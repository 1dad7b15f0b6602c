// SPDX-License-Identifier: MIT
#include "headless/resources/numbers.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace headless::resources {

std::optional<int32_t> parseInteger(std::string_view text) {
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    int base = 10;
    if (text.starts_with("0x") || text.starts_with("0X")) {
        base = 16;
        text.remove_prefix(2);
    } else if (text.size() > 1 && text[0] == '0') {
        base = 8;
    }
    uint32_t magnitude = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), magnitude, base);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    constexpr uint32_t top = std::numeric_limits<int32_t>::max();
    if (magnitude > top + (negative ? 1u : 0u) && (base != 16 || negative))
        return std::nullopt;
    return static_cast<int32_t>(negative ? 0u - magnitude : magnitude);
}

std::optional<double> parseReal(std::string_view text) {
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace headless::resources
