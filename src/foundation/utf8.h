// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <string_view>

namespace Quenza {

/// Offset of the first byte that belongs to no UTF-8 character, or npos. Goes by the number of bytes that a
/// character must have: overlong forms of three and four bytes and surrogates pass.
u64 findInvalidUTF8(std::string_view text);

} // namespace Quenza
