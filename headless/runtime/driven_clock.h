// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <list>
#include <mutex>
#include <optional>
#include <set>
#include <utility>

namespace headless {

/// A clock that stands still until it's moved, for tests: what sleeps by it wakes at exact times. Any thread.
class DrivenClock {
public:
    /// Since the clock was made.
    using Time = std::chrono::milliseconds;
    /// Tells the threads apart that are looked after; null for others.
    using Sleeper = const void*;

    /// `onSleep` is called by each thread that falls asleep, under the clock's lock.
    explicit DrivenClock(std::function<void()> onSleep) : onSleep_(std::move(onSleep)) {}

    Time now() const;
    /// Returns when the clock has been moved by `length`, or at once when that is 0. A released sleeper goes
    /// on soon, whatever the clock says.
    void sleep(Time length, Sleeper sleeper);

    /// True while `sleeper` sleeps and only a later time will wake it.
    bool isAsleep(Sleeper sleeper) const;
    /// When the next one wakes.
    std::optional<Time> nextWake() const;
    /// Wakes those whose time has come; the clock never goes back.
    void moveTo(Time time);
    /// From now on `sleeper` doesn't wait for the clock: somebody waits for it, and won't move the clock.
    void release(Sleeper sleeper);
    /// Takes `release` back.
    void bind(Sleeper sleeper);

private:
    struct Sleep {
        Time wake;
        Sleeper sleeper;
    };

    const std::function<void()> onSleep_;
    mutable std::mutex mutex_;
    std::condition_variable moved_;
    Time now_{0};
    std::list<Sleep> sleeps_;
    std::set<Sleeper> released_;
};

} // namespace headless
