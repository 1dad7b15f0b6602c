// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

namespace headless {

class DrivenClock;

/// The main thread's work: what other threads posted, calls that they wait for, and timers. The thread that
/// makes the loop is the main thread. The loop turns while `runUntil` runs, which may be nested.
class MainLoop {
public:
    using SteadyClock = std::chrono::steady_clock;
    using Task = std::function<void()>;

    /// Timers follow `clock` when there is one; it must outlive the loop.
    explicit MainLoop(const DrivenClock* clock = nullptr) : clock_(clock) {}

    bool isMainThread() const { return std::this_thread::get_id() == mainThread_; }

    /// Runs `task` on the main thread at the loop's next turn. Any thread.
    void post(Task task);

    /// Runs `task` on the main thread and returns when it is through. False, without running it, when the
    /// main thread serves no calls at the moment. An exception of the task comes out here. Any thread.
    bool call(const Task& task);

    /// Wakes the loop, so that it asks `done` again. Any thread.
    void wake();

    /// Main thread: calls `task` every `interval` from now on; a late call doesn't hurry the next. Gives a
    /// number for `removeTimer`.
    int addTimer(std::chrono::milliseconds interval, Task task);
    /// Main thread: calls `task` once, `delay` from now.
    int addOneShot(std::chrono::milliseconds delay, Task task);
    /// Main thread. A timer may remove itself.
    void removeTimer(int number);

    /// When something must be done at the latest, by the system's time; nothing for no limit.
    using Deadline = std::optional<SteadyClock::time_point>;

    /// Main thread: does the work that comes until `done` says so, which is asked after each piece of it.
    /// False when the deadline came first.
    bool runUntil(const std::function<bool()>& done, Deadline deadline = std::nullopt);
    /// Main thread: answers calls of other threads until `done`; posted tasks and timers wait. False when the
    /// deadline came first.
    bool serveCallsUntil(const std::function<bool()>& done, Deadline deadline = std::nullopt);
    /// Main thread: does what was posted so far, and what that posts.
    void runPosted();
    /// Main thread: when the next timer is due, by the loop's clock.
    Deadline nextTimer() const;
    /// Main thread: runs the timers that are due.
    void runDueTimers();
    /// By the loop's clock.
    SteadyClock::time_point now() const;

    /// While one lives, other threads' calls wait for the loop's next turn instead of being refused.
    class Serving {
    public:
        explicit Serving(MainLoop& loop);
        Serving(const Serving&) = delete;
        Serving& operator=(const Serving&) = delete;
        ~Serving();

    private:
        MainLoop& loop_;
    };

private:
    struct Call {
        const Task* task;
        std::exception_ptr error;
        bool finished = false;
    };
    struct Timer {
        SteadyClock::time_point due;
        std::chrono::milliseconds interval;
        Task task;
        bool repeats;
    };

    using Lock = std::unique_lock<std::mutex>;

    int insertTimer(std::chrono::milliseconds interval, Task task, bool repeats);
    // These give the lock up when they return true.
    bool runOneCall(Lock& lock);
    bool runOnePosted(Lock& lock);
    bool runOneTimer();
    void waitForWork(Lock& lock, Deadline deadline);
    void waitUntil(Lock& lock, Deadline deadline, const std::function<bool()>& hasWork);

    const DrivenClock* const clock_;
    const std::thread::id mainThread_ = std::this_thread::get_id();

    std::mutex mutex_;
    std::condition_variable workCame_;
    std::condition_variable callFinished_;
    std::deque<Task> posted_;
    std::deque<Call*> calls_;
    /// How many runs of the loop answer calls; above 0 a caller may wait.
    int serving_ = 0;
    bool woken_ = false;

    // Only the main thread uses the timers.
    std::map<int, Timer> timers_;
    int lastTimer_ = 0;
};

} // namespace headless
