// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <string_view>

namespace Quenza {

/// Line and column of a place in a text, counted as TinyXML does: from 1, a tab leads behind the next
/// multiple of four, a UTF-8 character counts once.
struct XMLPlace {
    u32 line = 1;
    u32 column = 1;

    /// Moves over a stretch of text.
    void advance(std::string_view text);
};

} // namespace Quenza
