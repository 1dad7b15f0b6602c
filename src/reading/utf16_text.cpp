// SPDX-License-Identifier: MIT
#include "reading/utf16_text.h"

#include "foundation/types.h"

#include <cstddef>

namespace Quenza {

namespace {

constexpr std::string_view UTF8_MARK = "\xEF\xBB\xBF";
constexpr std::string_view BIG_ENDIAN_MARK = "\xFE\xFF";
constexpr std::string_view LITTLE_ENDIAN_MARK = "\xFF\xFE";

void appendUtf8(std::string& text, u32 code) {
    const auto tail = [code](u32 shift) { return char(0x80 | (code >> shift & 0x3F)); };
    if (code < 0x80) {
        text += char(code);
    } else if (code < 0x800) {
        text += {char(0xC0 | code >> 6), tail(0)};
    } else if (code < 0x10000) {
        text += {char(0xE0 | code >> 12), tail(6), tail(0)};
    } else {
        text += {char(0xF0 | code >> 18), tail(12), tail(6), tail(0)};
    }
}

std::string fromUtf16(std::string_view bytes, bool big_endian) {
    const auto unit = [&](std::size_t i) {
        const u32 first = static_cast<unsigned char>(bytes[2 * i]);
        const u32 second = static_cast<unsigned char>(bytes[2 * i + 1]);
        return big_endian ? first << 8 | second : second << 8 | first;
    };
    const std::size_t count = bytes.size() / 2;
    std::string text;
    text.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        u32 code = unit(i);
        const bool high = code >= 0xD800 && code < 0xDC00;
        if (high && i + 1 < count && unit(i + 1) >= 0xDC00 && unit(i + 1) < 0xE000)
            code = 0x10000 + ((code - 0xD800) << 10) + (unit(++i) - 0xDC00);
        else if (code >= 0xD800 && code < 0xE000)
            code = 0xFFFD;
        appendUtf8(text, code);
    }
    return text;
}

} // namespace

std::string_view textOfFile(std::string_view bytes, std::string& converted) {
    if (bytes.substr(0, 3) == UTF8_MARK)
        return bytes.substr(3);
    const std::string_view mark = bytes.substr(0, 2);
    if (mark != BIG_ENDIAN_MARK && mark != LITTLE_ENDIAN_MARK)
        return bytes;
    converted = fromUtf16(bytes.substr(2), mark == BIG_ENDIAN_MARK);
    return converted;
}

} // namespace Quenza
