// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace Quenza {

/// The text behind a byte order mark as UTF-8: `converted` takes it when the file is in UTF-16. A text
/// without a mark is what it is. Halves of pairs that stand alone become U+FFFD.
std::string_view textOfFile(std::string_view bytes, std::string& converted);

} // namespace Quenza
