// SPDX-License-Identifier: MIT
#include "foundation/utf8.h"

#include <algorithm>
#include <cstring>

namespace Quenza {

namespace {

/// Bytes of the character that begins with this byte; 0 for bytes that begin none.
u64 characterLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2)
        return 0;
    return lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
}

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// Number of bytes from `at` on that are ASCII.
u64 asciiLength(std::string_view text, u64 at) {
    constexpr u64 HIGH_BITS = 0x8080808080808080;
    const u64 begin = at;
    u64 block = 0;
    for (; text.size() - at >= sizeof block; at += sizeof block) {
        std::memcpy(&block, text.data() + at, sizeof block);
        if (block & HIGH_BITS)
            break;
    }
    while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80)
        ++at;
    return at - begin;
}

} // namespace

u64 findInvalidUTF8(std::string_view text) {
    u64 at = 0;
    while (at < text.size()) {
        at += asciiLength(text, at);
        if (at == text.size())
            break;
        const unsigned char lead = static_cast<unsigned char>(text[at]);
        const u64 length = characterLength(lead);
        if (length == 0 || length > text.size() - at ||
            !std::all_of(text.begin() + i64(at) + 1, text.begin() + i64(at + length), isContinuation))
            return at;
        at += length;
    }
    return std::string_view::npos;
}

} // namespace Quenza
