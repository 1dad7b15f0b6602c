// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace engine {

/// Threads that do one work together until it's done or they are stopped. One that throws stops the others.
class RenderThreads {
public:
    /// `work` returns soon after its argument has become true. `failed` is called once, on the thread that
    /// threw first. Throws std::system_error when the system has no thread left.
    RenderThreads(unsigned count, std::function<void(const std::atomic<bool>& stop)> work,
                  std::function<void(const std::exception_ptr&)> failed);
    /// Stops the threads and waits for them.
    ~RenderThreads();
    RenderThreads(const RenderThreads&) = delete;
    RenderThreads& operator=(const RenderThreads&) = delete;

    /// Doesn't wait.
    void stop() { stop_ = true; }
    /// Waits for the end of all threads, `time` at most. True when they have ended.
    bool waitFor(std::chrono::milliseconds time);

private:
    void run();

    std::function<void(const std::atomic<bool>&)> work_;
    std::function<void(const std::exception_ptr&)> failed_;
    std::atomic<bool> stop_{false};
    std::mutex mutex_;
    std::condition_variable ended_;
    unsigned working_ = 0;
    bool has_failed_ = false;
    std::vector<std::thread> threads_;
};

} // namespace engine
