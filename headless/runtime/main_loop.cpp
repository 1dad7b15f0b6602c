// SPDX-License-Identifier: MIT
#include "headless/runtime/main_loop.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "headless/runtime/driven_clock.h"

namespace headless {

namespace {

bool hasPassed(const MainLoop::Deadline& deadline) {
    return deadline && MainLoop::SteadyClock::now() >= *deadline;
}

} // namespace

MainLoop::Serving::Serving(MainLoop& loop) : loop_(loop) {
    const std::lock_guard lock(loop_.mutex_);
    ++loop_.serving_;
}

MainLoop::Serving::~Serving() {
    const std::lock_guard lock(loop_.mutex_);
    --loop_.serving_;
    loop_.callFinished_.notify_all();
}

void MainLoop::post(Task task) {
    const std::lock_guard lock(mutex_);
    posted_.push_back(std::move(task));
    woken_ = true;
    workCame_.notify_all();
}

bool MainLoop::call(const Task& task) {
    if (isMainThread()) {
        task();
        return true;
    }
    Lock lock(mutex_);
    if (serving_ == 0) {
        return false;
    }
    Call call{&task, nullptr};
    calls_.push_back(&call);
    workCame_.notify_all();
    // The last run of the loop may end without having come to the call.
    callFinished_.wait(lock, [&] { return call.finished || serving_ == 0; });
    if (!call.finished) {
        std::erase(calls_, &call);
        return false;
    }
    if (call.error) {
        std::rethrow_exception(call.error);
    }
    return true;
}

void MainLoop::wake() {
    const std::lock_guard lock(mutex_);
    woken_ = true;
    workCame_.notify_all();
}

int MainLoop::addTimer(std::chrono::milliseconds interval, Task task) {
    return insertTimer(std::max(interval, std::chrono::milliseconds(1)), std::move(task), true);
}

int MainLoop::addOneShot(std::chrono::milliseconds delay, Task task) {
    return insertTimer(delay, std::move(task), false);
}

int MainLoop::insertTimer(std::chrono::milliseconds interval, Task task, bool repeats) {
    timers_.emplace(++lastTimer_, Timer{now() + interval, interval, std::move(task), repeats});
    return lastTimer_;
}

void MainLoop::removeTimer(int number) {
    timers_.erase(number);
}

MainLoop::SteadyClock::time_point MainLoop::now() const {
    return clock_ ? SteadyClock::time_point(clock_->now()) : SteadyClock::now();
}

bool MainLoop::runUntil(const std::function<bool()>& done, Deadline deadline) {
    const Serving serving(*this);
    while (!done()) {
        if (hasPassed(deadline)) {
            return false;
        }
        Lock lock(mutex_);
        if (runOneCall(lock) || runOnePosted(lock)) {
            continue;
        }
        lock.unlock();
        if (!runOneTimer()) {
            lock.lock();
            waitForWork(lock, deadline);
        }
    }
    return true;
}

bool MainLoop::serveCallsUntil(const std::function<bool()>& done, Deadline deadline) {
    const Serving serving(*this);
    while (!done()) {
        if (hasPassed(deadline)) {
            return false;
        }
        Lock lock(mutex_);
        if (!runOneCall(lock)) {
            waitUntil(lock, deadline, [this] { return woken_ || !calls_.empty(); });
        }
    }
    return true;
}

void MainLoop::runPosted() {
    Lock lock(mutex_);
    while (runOnePosted(lock)) {
        lock.lock();
    }
}

bool MainLoop::runOneCall(Lock& lock) {
    if (calls_.empty()) {
        return false;
    }
    Call& call = *calls_.front();
    calls_.pop_front();
    lock.unlock();
    try {
        (*call.task)();
    } catch (...) {
        call.error = std::current_exception();
    }
    lock.lock();
    call.finished = true;
    callFinished_.notify_all();
    lock.unlock();
    return true;
}

bool MainLoop::runOnePosted(Lock& lock) {
    if (posted_.empty()) {
        return false;
    }
    const Task task = std::move(posted_.front());
    posted_.pop_front();
    lock.unlock();
    task();
    return true;
}

MainLoop::Deadline MainLoop::nextTimer() const {
    const auto next =
        std::ranges::min_element(timers_, {}, [](const auto& entry) { return entry.second.due; });
    return next == timers_.end() ? std::nullopt : Deadline(next->second.due);
}

void MainLoop::runDueTimers() {
    while (runOneTimer()) {
    }
}

bool MainLoop::runOneTimer() {
    const auto time = now();
    const auto next =
        std::ranges::min_element(timers_, {}, [](const auto& entry) { return entry.second.due; });
    if (next == timers_.end() || next->second.due > time) {
        return false;
    }
    const int number = next->first;
    const Task task = next->second.task;
    if (next->second.repeats) {
        // A timer of a nested loop may be the one that is running: it isn't due again before its interval.
        next->second.due = time + next->second.interval;
    } else {
        timers_.erase(next);
    }
    task();
    if (const auto again = timers_.find(number); again != timers_.end()) {
        again->second.due = now() + again->second.interval;
    }
    return true;
}

void MainLoop::waitForWork(Lock& lock, Deadline deadline) {
    // A driven clock doesn't move while its main thread waits.
    const Deadline timer = clock_ ? std::nullopt : nextTimer();
    const Deadline first = timer && deadline ? std::min(timer, deadline) : timer ? timer : deadline;
    waitUntil(lock, first, [this] { return woken_ || !posted_.empty() || !calls_.empty(); });
}

void MainLoop::waitUntil(Lock& lock, Deadline deadline, const std::function<bool()>& hasWork) {
    if (deadline) {
        workCame_.wait_until(lock, *deadline, hasWork);
    } else {
        workCame_.wait(lock, hasWork);
    }
    woken_ = false;
}

} // namespace headless
