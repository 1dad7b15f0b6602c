// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/exceptions.h"
#include "foundation/ref_counted.h"

#include <thread>

namespace Quenza {

class MyThreadExcep : public MessageExcep {
public:
    using MessageExcep::MessageExcep;
};

/// A thread that runs once. Lives on the heap, held by Ref handles and, while it runs, by itself: whoever
/// isn't interested in its end may let go of it.
class MyThread : public ThreadSafeRefCounted {
public:
    MyThread() = default;
    ~MyThread() override;

    /// What the thread does. Its exceptions end here: nobody catches them above.
    virtual void run() = 0;

    /// Once. Throws MyThreadExcep "Thread creation failed.".
    void launch();
    /// Waits until `run` has returned. Once, after the launch, from another thread.
    void join();
    /// 0 is normal, and lower is less, in the numbers of Windows. Elsewhere a thread with less waits for the
    /// others as batch work, from -15 on for an idle processor, and more than normal is refused. Between
    /// launch and join. Throws MyThreadExcep "SetThreadPriority failed: " + the system's error number.
    void setPriority(int value);

private:
    std::thread thread_handle;
    bool joined = false;
};

} // namespace Quenza
