// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace Quenza {

/// A piece of work for a TaskManager. It shares nothing with other tasks but what it only reads, and the
/// buffers in which it has places of its own.
class Task {
public:
    Task() = default;
    Task(const Task&) = delete;
    Task& operator=(const Task&) = delete;
    virtual ~Task() = default;
    /// `thread_index` counts the manager's threads from 0; tasks with the same index never run at once.
    virtual void run(std::size_t thread_index) = 0;
};

} // namespace Quenza
