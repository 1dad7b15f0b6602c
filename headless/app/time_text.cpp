// SPDX-License-Identifier: MIT
#include "headless/app/time_text.h"

#include "headless/app/arguments.h"

#include <charconv>
#include <cmath>
#include <string>

namespace headless {

std::chrono::milliseconds parseTime(std::string_view text) {
    constexpr double LONGEST = 1e9;
    double number = 0.0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const std::string_view unit(stop, static_cast<size_t>(end - stop));
    const double milliseconds = unit == "ms" ? number : number * 1000.0;
    const bool isUnit = unit.empty() || unit == "s" || unit == "ms";
    if (error != std::errc() || !isUnit || !(milliseconds >= 0.0) || milliseconds > LONGEST) {
        throw UsageError("\"" + std::string(text) + "\" is no time: it reads 2, 1.5s or 500ms");
    }
    return std::chrono::milliseconds(std::llround(milliseconds));
}

} // namespace headless
