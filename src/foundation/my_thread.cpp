// SPDX-License-Identifier: MIT
#include "foundation/my_thread.h"

#include "foundation/platform.h"

#include <string>
#include <system_error>
#include <utility>

namespace Quenza {

MyThread::~MyThread() {
    // The last handle may be the thread's own.
    if (!joined && thread_handle.joinable())
        thread_handle.detach();
}

void MyThread::launch() {
    // Outlives the assignment below, also when nobody else holds the object and the thread is quicker.
    const Ref<MyThread> self(this);
    try {
        Ref<MyThread> held_by_thread(this);
        thread_handle = std::thread([held = std::move(held_by_thread)] { held->run(); });
    } catch (const std::system_error&) {
        throw MyThreadExcep("Thread creation failed.");
    }
}

void MyThread::join() {
    joined = true;
    thread_handle.join();
}

void MyThread::setPriority(int value) {
    if (const int error = PlatformUtils::setThreadPriority(thread_handle, value); error != 0)
        throw MyThreadExcep("SetThreadPriority failed: " + std::to_string(error));
}

} // namespace Quenza
