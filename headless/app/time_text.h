// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <string_view>

namespace headless {

/// "2", "2s", "1.5s" or "500ms". Throws UsageError, also for more than eleven days.
std::chrono::milliseconds parseTime(std::string_view text);

} // namespace headless
