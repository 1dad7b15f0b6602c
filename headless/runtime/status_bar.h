// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "headless/runtime/console.h"

namespace headless {

/// The status bar of the host's window: a text and a percentage, set by any thread, and what runs at the
/// moment with the time since it began. `show` gets the line to be seen, "" when there is nothing to show.
class StatusBar {
public:
    explicit StatusBar(LineSink show) : show_(std::move(show)) {}

    void setText(const std::string& text);
    /// Clamped to 0 to 100.
    void setPercent(int percent);
    void clear();

    /// Names the work that goes on; "" ends it.
    void setWork(const std::string& name);
    /// Shows the line anew, with the time that has passed.
    void refresh();

    /// What the bar showed so far, each change once, without times: "text", "text 40%".
    std::vector<std::string> history() const;

private:
    std::string content() const;
    void changed();
    void redraw();

    mutable std::mutex mutex_;
    LineSink show_;
    std::string text_;
    std::optional<int> percent_;
    std::string work_;
    std::chrono::steady_clock::time_point workBegan_;
    std::vector<std::string> history_;
};

} // namespace headless
