// SPDX-License-Identifier: MIT
#include "headless/runtime/clock.h"

#include <charconv>
#include <chrono>
#include <ctime>

namespace headless {

namespace {

/// Plug-ins take the timer as a seed and multiply by it, so that it may not be 0.
constexpr uint32_t FIXED_MILLISECONDS = 1'000'000;

/// One number of a date: its digits, the sign behind them, the values it may have.
struct DatePart {
    int32_t DateTime::*field;
    size_t digits;
    char behind;
    int32_t min, max;
};

constexpr DatePart PARTS[] = {
    {&DateTime::year, 4, '-', 1, 9999}, {&DateTime::month, 2, '-', 1, 12},
    {&DateTime::day, 2, ' ', 1, 31},    {&DateTime::hour, 2, ':', 0, 23},
    {&DateTime::minute, 2, ':', 0, 59}, {&DateTime::second, 2, '\0', 0, 59},
};

bool isDayOfMonth(const DateTime& date) {
    const std::chrono::year_month_day day{std::chrono::year(date.year),
                                          std::chrono::month(static_cast<unsigned>(date.month)),
                                          std::chrono::day(static_cast<unsigned>(date.day))};
    return day.ok();
}

std::tm localTime(std::time_t seconds) {
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &seconds);
#else
    localtime_r(&seconds, &local);
#endif
    return local;
}

} // namespace

std::optional<DateTime> Clock::parse(std::string_view text) {
    DateTime date;
    for (const DatePart& part : PARTS) {
        if (text.size() < part.digits) {
            return std::nullopt;
        }
        const char* const end = text.data() + part.digits;
        const auto [stop, error] = std::from_chars(text.data(), end, date.*part.field);
        if (error != std::errc() || stop != end || date.*part.field < part.min ||
            date.*part.field > part.max) {
            return std::nullopt;
        }
        text.remove_prefix(part.digits);
        if (part.behind == '\0') {
            break;
        }
        if (text.empty() || text.front() != part.behind) {
            return std::nullopt;
        }
        text.remove_prefix(1);
    }
    return text.empty() && isDayOfMonth(date) ? std::optional(date) : std::nullopt;
}

DateTime Clock::now() const {
    if (fixed_) {
        return *fixed_;
    }
    const std::tm local = localTime(std::time(nullptr));
    DateTime now;
    now.year = local.tm_year + 1900;
    now.month = local.tm_mon + 1;
    now.day = local.tm_mday;
    now.hour = local.tm_hour;
    now.minute = local.tm_min;
    now.second = local.tm_sec;
    return now;
}

uint32_t Clock::milliseconds() const {
    if (driven_) {
        return FIXED_MILLISECONDS + static_cast<uint32_t>(driven_->now().count());
    }
    if (fixed_) {
        return FIXED_MILLISECONDS;
    }
    const auto passed = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(passed).count());
}

} // namespace headless
