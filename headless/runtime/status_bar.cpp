// SPDX-License-Identifier: MIT
#include "headless/runtime/status_bar.h"

#include "headless/runtime/terminal.h"

#include <algorithm>

namespace headless {

namespace {

/// Renders show something new many times a second, for days.
constexpr size_t LONGEST_HISTORY = 10'000;

void append(std::string& line, const std::string& part, const char* between = "  ") {
    if (!part.empty()) {
        line += line.empty() ? "" : between;
        line += part;
    }
}

} // namespace

void StatusBar::setText(const std::string& text) {
    const std::lock_guard lock(mutex_);
    if (showText_ && !text.empty() && text != text_) {
        showText_(text);
    }
    text_ = text;
    changed();
}

void StatusBar::setPercent(int percent) {
    const std::lock_guard lock(mutex_);
    percent_ = std::clamp(percent, 0, 100);
    changed();
}

void StatusBar::clear() {
    const std::lock_guard lock(mutex_);
    text_.clear();
    percent_.reset();
    changed();
}

void StatusBar::setWork(const std::string& name) {
    const std::lock_guard lock(mutex_);
    if (work_.empty()) {
        workBegan_ = std::chrono::steady_clock::now();
    }
    work_ = name;
    redraw();
}

void StatusBar::refresh() {
    const std::lock_guard lock(mutex_);
    redraw();
}

std::string StatusBar::text() const {
    const std::lock_guard lock(mutex_);
    return text_;
}

std::optional<int> StatusBar::percent() const {
    const std::lock_guard lock(mutex_);
    return percent_;
}

std::vector<std::string> StatusBar::history() const {
    const std::lock_guard lock(mutex_);
    return {history_.begin(), history_.end()};
}

std::string StatusBar::content() const {
    std::string content = text_;
    if (percent_) {
        append(content, std::to_string(*percent_), " ");
        content += '%';
    }
    return content;
}

void StatusBar::changed() {
    std::string now = content();
    if (history_.empty() || history_.back() != now) {
        history_.push_back(std::move(now));
        if (history_.size() > LONGEST_HISTORY) {
            history_.pop_front();
        }
        redraw();
    }
}

void StatusBar::redraw() {
    std::string line = work_;
    append(line, content());
    if (!work_.empty()) {
        const auto passed = std::chrono::steady_clock::now() - workBegan_;
        append(line, elapsedText(std::chrono::duration_cast<std::chrono::seconds>(passed).count()));
    }
    show_(line);
}

} // namespace headless
