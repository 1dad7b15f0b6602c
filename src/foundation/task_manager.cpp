// SPDX-License-Identifier: MIT
#include "foundation/task_manager.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace Quenza {

void TaskRunnerThread::run() {
    while (std::unique_ptr<Task> task = manager->dequeueTask()) {
        std::exception_ptr failure;
        try {
            task->run(thread_index);
        } catch (...) {
            failure = std::current_exception();
        }
        task.reset();
        manager->taskFinished(std::move(failure));
    }
}

TaskManager::TaskManager(std::size_t num_threads) {
    const std::size_t wanted =
        num_threads > 0 ? num_threads : std::max<std::size_t>(1, std::thread::hardware_concurrency());
    try {
        while (threads.size() < wanted) {
            const Ref<TaskRunnerThread> thread(new TaskRunnerThread(this, threads.size()));
            threads.reserve(threads.size() + 1);
            thread->launch();
            threads.push_back(thread);
        }
    } catch (const MyThreadExcep&) {
        if (threads.empty())
            throw;
    } catch (...) {
        endThreads();
        throw;
    }
}

TaskManager::~TaskManager() {
    endThreads();
}

void TaskManager::endThreads() {
    {
        const std::lock_guard lock(mutex);
        ending = true;
    }
    tasks_changed.notify_all();
    for (const Ref<TaskRunnerThread>& thread : threads)
        thread->join();
}

void TaskManager::addTask(std::unique_ptr<Task> task) {
    {
        const std::lock_guard lock(mutex);
        queue.push_back(std::move(task));
        ++unfinished;
    }
    tasks_changed.notify_one();
}

void TaskManager::waitForTasks() {
    std::unique_lock lock(mutex);
    all_done.wait(lock, [this] { return unfinished == 0; });
    if (std::exception_ptr failure = std::exchange(first_failure, nullptr))
        std::rethrow_exception(std::move(failure));
}

std::unique_ptr<Task> TaskManager::dequeueTask() {
    std::unique_lock lock(mutex);
    tasks_changed.wait(lock, [this] { return ending || !queue.empty(); });
    if (ending)
        return nullptr;
    std::unique_ptr<Task> task = std::move(queue.front());
    queue.pop_front();
    return task;
}

void TaskManager::taskFinished(std::exception_ptr failure) {
    const std::lock_guard lock(mutex);
    if (!first_failure)
        first_failure = std::move(failure);
    if (--unfinished == 0)
        all_done.notify_all();
}

} // namespace Quenza
