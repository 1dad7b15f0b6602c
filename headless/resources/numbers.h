// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace headless::resources {

/// The whole text as an integer, C's prefixes for hexadecimal and octal included; nothing when it is none or
/// doesn't fit 32 bits, signed. "0xFFFFFFFF" and its like are taken as the bit pattern.
std::optional<int32_t> parseInteger(std::string_view text);

/// The whole text as a finite number; a leading '+' is allowed.
std::optional<double> parseReal(std::string_view text);

} // namespace headless::resources
