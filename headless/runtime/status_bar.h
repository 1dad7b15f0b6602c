// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <deque>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "headless/runtime/console.h"

namespace headless {

/// The status bar of the host's window: a text and a percentage, set by any thread, and what runs at the
/// moment with the time since it began. `show` gets the line to be seen, "" when there is nothing to show,
/// and `showText` each new text.
class StatusBar {
public:
    explicit StatusBar(LineSink show, LineSink showText = {})
        : show_(std::move(show)), showText_(std::move(showText)) {}

    void setText(const std::string& text);
    /// Clamped to 0 to 100.
    void setPercent(int percent);
    void clear();

    /// Names the work that goes on; "" ends it.
    void setWork(const std::string& name);
    /// Shows the line anew, with the time that has passed.
    void refresh();

    /// The text, "" without one.
    std::string text() const;
    std::optional<int> percent() const;
    /// What the bar showed lately, each change once, without times: "text", "text 40%".
    std::vector<std::string> history() const;

private:
    std::string content() const;
    void changed();
    void redraw();

    mutable std::mutex mutex_;
    LineSink show_;
    LineSink showText_;
    std::string text_;
    std::optional<int> percent_;
    std::string work_;
    std::chrono::steady_clock::time_point workBegan_;
    std::deque<std::string> history_;
};

} // namespace headless
