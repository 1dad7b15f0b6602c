// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/my_thread.h"
#include "foundation/ref_counted.h"
#include "foundation/task.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <vector>

namespace Quenza {

class TaskManager;

/// Runs the tasks of a manager, which outlives it.
class TaskRunnerThread : public MyThread {
public:
    TaskRunnerThread(TaskManager* its_manager, std::size_t index)
        : manager(its_manager), thread_index(index) {}
    void run() override;

private:
    TaskManager* manager;
    std::size_t thread_index;
};

/// Threads that wait for tasks and run them, in the order in which they were added. Any thread may add tasks.
class TaskManager {
public:
    /// With 0, a thread for each processor. There are fewer when the system gives no more; throws
    /// MyThreadExcep when it gives none.
    explicit TaskManager(std::size_t num_threads = 0);
    /// Waits for the tasks that run; those that nobody has begun are dropped.
    ~TaskManager();
    TaskManager(const TaskManager&) = delete;
    TaskManager& operator=(const TaskManager&) = delete;

    std::size_t getNumThreads() const { return threads.size(); }
    void addTask(std::unique_ptr<Task> task);
    /// Returns when all tasks are done. Throws again what one of them has thrown since the last time. Not
    /// from a task.
    void waitForTasks();

    // The runners' side.

    /// Waits for a task; null when the runner is to end.
    std::unique_ptr<Task> dequeueTask();
    /// A task is done, and gone; `failure` is what it threw.
    void taskFinished(std::exception_ptr failure);

private:
    void endThreads();

    std::mutex mutex;
    std::condition_variable tasks_changed;
    std::condition_variable all_done;
    std::deque<std::unique_ptr<Task>> queue;
    std::size_t unfinished = 0; ///< Waiting and running ones.
    std::exception_ptr first_failure;
    bool ending = false;
    std::vector<Ref<TaskRunnerThread>> threads;
};

} // namespace Quenza
