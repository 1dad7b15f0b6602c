// SPDX-License-Identifier: MIT
#include "headless/runtime/driven_clock.h"

#include <algorithm>
#include <thread>

namespace headless {

namespace {

/// How long a released thread rests, so that a loop which waits for something gives way to it.
constexpr std::chrono::milliseconds RELEASED_SLEEP{1};

} // namespace

DrivenClock::Time DrivenClock::now() const {
    const std::lock_guard lock(mutex_);
    return now_;
}

void DrivenClock::sleep(Time length, Sleeper sleeper) {
    std::unique_lock lock(mutex_);
    const auto isReleased = [&] { return sleeper && released_.contains(sleeper); };
    if (isReleased()) {
        lock.unlock();
        std::this_thread::sleep_for(std::min(length, RELEASED_SLEEP));
        return;
    }
    if (length <= Time(0)) {
        return;
    }
    const Time wake = now_ + length;
    const auto entry = sleeps_.insert(sleeps_.end(), {wake, sleeper});
    onSleep_();
    moved_.wait(lock, [&] { return now_ >= wake || isReleased(); });
    sleeps_.erase(entry);
}

bool DrivenClock::isAsleep(Sleeper sleeper) const {
    const std::lock_guard lock(mutex_);
    return !released_.contains(sleeper) && std::ranges::any_of(sleeps_, [&](const Sleep& sleep) {
        return sleep.sleeper == sleeper && sleep.wake > now_;
    });
}

std::optional<DrivenClock::Time> DrivenClock::nextWake() const {
    const std::lock_guard lock(mutex_);
    std::optional<Time> next;
    for (const Sleep& sleep : sleeps_) {
        // One whose time has come is on its way to go on.
        if (sleep.wake > now_ && (!next || sleep.wake < *next)) {
            next = sleep.wake;
        }
    }
    return next;
}

void DrivenClock::moveTo(Time time) {
    const std::lock_guard lock(mutex_);
    now_ = std::max(now_, time);
    moved_.notify_all();
}

void DrivenClock::release(Sleeper sleeper) {
    const std::lock_guard lock(mutex_);
    released_.insert(sleeper);
    moved_.notify_all();
}

void DrivenClock::bind(Sleeper sleeper) {
    const std::lock_guard lock(mutex_);
    released_.erase(sleeper);
}

} // namespace headless
