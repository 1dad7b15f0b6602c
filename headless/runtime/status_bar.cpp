// SPDX-License-Identifier: MIT
#include "headless/runtime/status_bar.h"

#include "headless/runtime/terminal.h"

#include <algorithm>

namespace headless {

namespace {

void append(std::string& line, const std::string& part, const char* between = "  ") {
    if (!part.empty()) {
        line += line.empty() ? "" : between;
        line += part;
    }
}

} // namespace

void StatusBar::setText(const std::string& text) {
    const std::lock_guard lock(mutex_);
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

std::vector<std::string> StatusBar::history() const {
    const std::lock_guard lock(mutex_);
    return history_;
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
