// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace Quenza {

/// What some programs begin a UTF-8 text with.
inline constexpr std::string_view BYTE_ORDER_MARK = "\xEF\xBB\xBF";

} // namespace Quenza
