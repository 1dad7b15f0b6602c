// SPDX-License-Identifier: MIT
#include "headless/resources/utf8.h"

namespace headless::resources {

void appendUtf8(std::string& text, char32_t codePoint) {
    const auto tail = [&](int shift) { text += static_cast<char>(0x80u | ((codePoint >> shift) & 0x3Fu)); };
    if (codePoint < 0x80) {
        text += static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        text += static_cast<char>(0xC0u | (codePoint >> 6));
        tail(0);
    } else if (codePoint < 0x10000) {
        text += static_cast<char>(0xE0u | (codePoint >> 12));
        tail(6);
        tail(0);
    } else {
        text += static_cast<char>(0xF0u | (codePoint >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
}

size_t utf8SequenceLength(std::string_view text) {
    if (text.empty())
        return 0;
    const auto first = static_cast<unsigned char>(text[0]);
    if (first < 0x80)
        return 1;
    const size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length)
        return 0;
    for (size_t i = 1; i < length; ++i)
        if (!isUtf8Continuation(text[i]))
            return 0;
    const auto second = static_cast<unsigned char>(text[1]);
    const bool overlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool surrogate = first == 0xED && second >= 0xA0;
    const bool tooLarge = first == 0xF4 && second >= 0x90;
    return overlong || surrogate || tooLarge ? 0 : length;
}

} // namespace headless::resources
