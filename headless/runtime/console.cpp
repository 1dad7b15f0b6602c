// SPDX-License-Identifier: MIT
#include "headless/runtime/console.h"

namespace headless {

void Console::print(const std::string& line) {
    const std::lock_guard lock(mutex_);
    lines_.push_back(line);
    sink_(line);
}

std::vector<std::string> Console::lines() const {
    const std::lock_guard lock(mutex_);
    return lines_;
}

} // namespace headless
