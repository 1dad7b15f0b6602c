// SPDX-License-Identifier: MIT
#include "reading/xml_place.h"

#include "reading/byte_order_mark.h"

#include <algorithm>

namespace Quenza {

namespace {

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

} // namespace

void XMLPlace::advance(std::string_view text) {
    constexpr u32 TAB_SIZE = 4;
    if (const u64 last_break = text.rfind('\n'); last_break != std::string_view::npos) {
        line += u32(std::count(text.begin(), text.begin() + i64(last_break) + 1, '\n'));
        column = 1;
        text.remove_prefix(last_break + 1);
    }
    for (u64 at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '\t')
            column = ((column - 1) / TAB_SIZE + 1) * TAB_SIZE + 1;
        else if (text.substr(at, BYTE_ORDER_MARK.size()) == BYTE_ORDER_MARK)
            at += BYTE_ORDER_MARK.size() - 1;
        else if (!isContinuation(c))
            ++column;
    }
}

} // namespace Quenza
