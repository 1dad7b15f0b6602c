// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/json_cursor.h"

#include <string>

namespace headless {

/// Reads and parses a file. DocumentError with line and column for what isn't JSON, and with the place for a
/// key that an object holds twice, as only one of the two could be kept.
Json loadJson(const std::string& file);

} // namespace headless
