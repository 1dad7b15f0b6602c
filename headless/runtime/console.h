// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace headless {

/// Takes one line of text, without its line end. Called by one thread at a time.
using LineSink = std::function<void(const std::string&)>;

/// Lines of text that any thread may print: each goes to the sink whole, and is kept.
class Console {
public:
    explicit Console(LineSink sink) : sink_(std::move(sink)) {}

    void print(const std::string& line);
    std::vector<std::string> lines() const;

private:
    mutable std::mutex mutex_;
    LineSink sink_;
    std::vector<std::string> lines_;
};

} // namespace headless
