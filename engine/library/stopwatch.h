// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <mutex>

namespace engine::library {

/// Sums up the time between its starts and stops. Any thread may use it.
class Stopwatch {
public:
    void start() {
        const std::lock_guard lock(mutex_);
        if (!running_) {
            since_ = Clock::now();
            running_ = true;
        }
    }
    void stop() {
        const std::lock_guard lock(mutex_);
        earlier_ = sum();
        running_ = false;
    }
    double seconds() const {
        const std::lock_guard lock(mutex_);
        return sum();
    }

private:
    using Clock = std::chrono::steady_clock;

    double sum() const {
        return running_ ? earlier_ + std::chrono::duration<double>(Clock::now() - since_).count() : earlier_;
    }

    mutable std::mutex mutex_;
    bool running_ = false;
    Clock::time_point since_;
    double earlier_ = 0;
};

} // namespace engine::library
