// SPDX-License-Identifier: MIT
#pragma once

#include "headless/runtime/driven_clock.h"
#include "host/general.h"

#include <memory>
#include <optional>
#include <string_view>

namespace headless {

/// The time that the plug-in is told. A fixed clock makes dates, seeds and names made from the timer the same
/// in every run.
class Clock {
public:
    Clock() = default;
    /// `driven` is null for the system's time.
    Clock(std::optional<DateTime> fixed, std::unique_ptr<DrivenClock> driven)
        : fixed_(fixed), driven_(std::move(driven)) {}

    /// Reads "YYYY-MM-DD hh:mm:ss"; nothing when the text is no such date.
    static std::optional<DateTime> parse(std::string_view text);

    /// Local time.
    DateTime now() const;
    /// Milliseconds since the machine started, wrapping around; a constant of a fixed clock, and of a driven
    /// one as far as it was moved.
    uint32_t milliseconds() const;
    /// True when `milliseconds` never changes.
    bool standsStill() const { return fixed_ && !driven_; }
    /// Null when the system's time is told.
    DrivenClock* driven() const { return driven_.get(); }

private:
    std::optional<DateTime> fixed_;
    std::unique_ptr<DrivenClock> driven_;
};

} // namespace headless
