// SPDX-License-Identifier: MIT
#include "headless/runtime/thread.h"

#include "headless/runtime/driven_clock.h"
#include "headless/runtime/main_loop.h"

#include <algorithm>
#include <exception>
#include <system_error>

namespace headless {

namespace {

thread_local const Thread* currentThread = nullptr;

} // namespace

const Thread* Thread::current() {
    return currentThread;
}

Thread::~Thread() {
    end(true);
}

bool Thread::start() {
    const std::lock_guard lock(mutex_);
    if (running_) {
        return false;
    }
    if (thread_.joinable()) {
        thread_.join();
    }
    breakRequested_ = false;
    if (clock_) {
        clock_->bind(this);
    }
    running_ = true;
    try {
        thread_ = std::thread([this] { run(); });
    } catch (const std::system_error& error) {
        running_ = false;
        errors_.print("A thread could not be started: " + std::string(error.what()));
        return false;
    }
    return true;
}

void Thread::run() {
    currentThread = this;
    try {
        plugin_.Main();
    } catch (const std::exception& error) {
        errors_.print("Thread \"" + std::string(plugin_.GetThreadName()) +
                      "\" ended with an exception: " + error.what());
    } catch (...) {
        errors_.print("Thread \"" + std::string(plugin_.GetThreadName()) + "\" ended with an exception");
    }
    running_ = false;
    loop_.wake();
}

void Thread::end(bool wait) {
    if (wait && loop_.isMainThread()) {
        // The thread hears of its end when its calls are answered, so that it may still ask the user.
        loop_.serveCallsUntil([this] {
            requestEnd(true);
            return !running_;
        });
    }
    requestEnd(wait);
    if (wait) {
        join();
    }
}

/// Whoever waits for the thread won't move the clock that it may sleep by.
void Thread::requestEnd(bool wait) {
    breakRequested_ = true;
    if (wait && clock_) {
        clock_->release(this);
    }
}

void Thread::join() {
    const std::lock_guard lock(mutex_);
    if (thread_.joinable() && thread_.get_id() != std::this_thread::get_id()) {
        thread_.join();
    }
}

Thread* Threads::alloc(C4DThread& plugin) {
    const std::lock_guard lock(mutex_);
    return threads_.emplace_back(std::make_unique<Thread>(plugin, loop_, errors_, clock_)).get();
}

void Threads::free(Thread* thread) {
    // Dies behind the lock: it waits for its end.
    std::unique_ptr<Thread> dying;
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::find(threads_, thread, &std::unique_ptr<Thread>::get);
    if (found != threads_.end()) {
        dying = std::move(*found);
        threads_.erase(found);
    }
}

void Threads::endAll() {
    std::vector<Thread*> running;
    {
        const std::lock_guard lock(mutex_);
        for (const std::unique_ptr<Thread>& thread : threads_) {
            running.push_back(thread.get());
        }
    }
    for (Thread* const thread : running) {
        thread->end(true);
    }
}

void Threads::clear() {
    std::vector<std::unique_ptr<Thread>> dying;
    const std::lock_guard lock(mutex_);
    dying.swap(threads_);
}

bool Threads::allRest() {
    const std::lock_guard lock(mutex_);
    return std::ranges::all_of(threads_, [this](const std::unique_ptr<Thread>& thread) {
        return !thread->isRunning() || clock_->isAsleep(thread.get());
    });
}

} // namespace headless
