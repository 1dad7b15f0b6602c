// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace headless::resources {

/// Appends one code point. Surrogates and values above U+10FFFF are the caller's to keep out.
void appendUtf8(std::string& text, char32_t codePoint);

/// Number of bytes of the well-formed UTF-8 sequence that `text` begins with; 0 when it begins with none.
/// Overlong forms, surrogates and values above U+10FFFF are not well-formed.
size_t utf8SequenceLength(std::string_view text);

/// True for a byte that carries on a sequence and so doesn't begin a character.
constexpr bool isUtf8Continuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0u) == 0x80u;
}

} // namespace headless::resources
