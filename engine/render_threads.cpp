// SPDX-License-Identifier: MIT
#include "engine/render_threads.h"

#include <utility>

namespace engine {

namespace {

void joinAll(std::vector<std::thread>& threads) {
    for (std::thread& thread : threads) {
        thread.join();
    }
}

} // namespace

RenderThreads::RenderThreads(unsigned count, std::function<void(const std::atomic<bool>& stop)> work,
                             std::function<void(const std::exception_ptr&)> failed)
    : work_(std::move(work)), failed_(std::move(failed)), working_(count) {
    threads_.reserve(count);
    try {
        for (unsigned i = 0; i < count; ++i) {
            threads_.emplace_back([this] { run(); });
        }
    } catch (...) {
        stop();
        joinAll(threads_);
        throw;
    }
}

RenderThreads::~RenderThreads() {
    stop();
    joinAll(threads_);
}

void RenderThreads::run() {
    std::exception_ptr caught;
    try {
        work_(stop_);
    } catch (...) {
        caught = std::current_exception();
        stop();
    }
    std::unique_lock lock(mutex_);
    if (caught && !std::exchange(has_failed_, true)) {
        lock.unlock();
        failed_(caught);
        lock.lock();
    }
    --working_;
    ended_.notify_all();
}

bool RenderThreads::waitFor(std::chrono::milliseconds time) {
    std::unique_lock lock(mutex_);
    return ended_.wait_for(lock, time, [this] { return working_ == 0; });
}

} // namespace engine
