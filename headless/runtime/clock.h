// SPDX-License-Identifier: MIT
#pragma once

#include "host/general.h"

#include <optional>
#include <string_view>

namespace headless {

/// The time that the plug-in is told. A fixed clock makes dates, seeds and names made from the timer the same
/// in every run.
class Clock {
public:
    Clock() = default;
    explicit Clock(std::optional<DateTime> fixed) : fixed_(fixed) {}

    /// Reads "YYYY-MM-DD hh:mm:ss"; nothing when the text is no such date.
    static std::optional<DateTime> parse(std::string_view text);

    /// Local time.
    DateTime now() const;
    /// Milliseconds since the machine started, wrapping around; a constant of a fixed clock.
    uint32_t milliseconds() const;

private:
    std::optional<DateTime> fixed_;
};

} // namespace headless
