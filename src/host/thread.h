// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

/// A thread as the host sees it. Opaque, the host's.
class BaseThread {
public:
    BaseThread() = delete;

    /// True when the thread was asked to end.
    bool TestBreak() const;
};

/// A thread of the plug-in. The object must outlive the thread: End(true) waits for it.
class C4DThread {
public:
    C4DThread();
    C4DThread(const C4DThread&) = delete;
    C4DThread& operator=(const C4DThread&) = delete;
    /// Asks a running thread to end, and waits.
    virtual ~C4DThread();

    /// An additional reason to end, asked by TestBreak.
    virtual bool TestDBreak() { return false; }
    virtual void Main() = 0;
    virtual const char* GetThreadName() = 0;

    bool Start();
    /// Asks the thread to end; with `wait` returns when it has.
    void End(bool wait = true);
    bool IsRunning() const;
    bool TestBreak();
    BaseThread* Get() const { return thread_; }

private:
    BaseThread* thread_;
};
