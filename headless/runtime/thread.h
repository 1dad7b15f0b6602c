// SPDX-License-Identifier: MIT
#pragma once

#include "host/thread.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "headless/runtime/console.h"

namespace headless {

class DrivenClock;
class MainLoop;

/// The host's side of a plug-in's thread: what a BaseThread points to. A Main that throws ends its thread
/// with an error line.
class Thread {
public:
    /// `clock` is null when the system's time is told.
    Thread(C4DThread& plugin, MainLoop& loop, Console& errors, DrivenClock* clock)
        : plugin_(plugin), loop_(loop), errors_(errors), clock_(clock) {}
    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;
    /// Asks the thread to end, and waits.
    ~Thread();

    /// False when it runs already or the system has no thread to give.
    bool start();
    /// Asks the thread to end. The main thread, when it waits, answers the calls of other threads meanwhile;
    /// the thread itself never waits.
    void end(bool wait);
    bool isRunning() const { return running_; }
    /// The one that the caller runs on, or null.
    static const Thread* current();
    /// True when the thread was asked to end, or its own TestDBreak says so.
    bool testBreak() const { return breakRequested_ || plugin_.TestDBreak(); }

private:
    void run();
    void requestEnd(bool wait);
    void join();

    C4DThread& plugin_;
    MainLoop& loop_;
    Console& errors_;
    DrivenClock* const clock_;
    std::atomic<bool> running_{false};
    std::atomic<bool> breakRequested_{false};
    std::mutex mutex_;
    std::thread thread_;
};

/// All threads of the plug-in, owned here. Any thread.
class Threads {
public:
    Threads(MainLoop& loop, Console& errors, DrivenClock* clock)
        : loop_(loop), errors_(errors), clock_(clock) {}

    Thread* alloc(C4DThread& plugin);
    void free(Thread* thread);
    /// Asks all to end, and waits.
    void endAll();
    /// Frees all, for plug-ins that didn't.
    void clear();
    /// With a driven clock: true when each has ended, or sleeps until a time to come.
    bool allRest();

private:
    MainLoop& loop_;
    Console& errors_;
    DrivenClock* const clock_;
    std::mutex mutex_;
    std::vector<std::unique_ptr<Thread>> threads_;
};

} // namespace headless
