// SPDX-License-Identifier: MIT
#include "foundation/my_thread.h"
#include "foundation/task_manager.h"
#include "support/thrown_message.h"

#include <atomic>
#include <functional>
#include <future>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <thread>
#include <utility>
#include <vector>

#ifndef _WIN32
#include <pthread.h>
#endif

using namespace Quenza;

namespace {

/// Tells when it's deleted.
class TestThread : public MyThread {
public:
    explicit TestThread(std::function<void()> its_body) : body(std::move(its_body)) {}
    ~TestThread() override { deleted.set_value(); }
    void run() override { body(); }

    std::function<void()> body;
    std::promise<void> deleted;
};

class FunctionTask : public Task {
public:
    explicit FunctionTask(std::function<void(std::size_t)> its_body) : body(std::move(its_body)) {}
    ~FunctionTask() override {
        if (counts_deletions)
            ++*counts_deletions;
    }
    void run(std::size_t thread_index) override { body(thread_index); }

    std::function<void(std::size_t)> body;
    std::atomic<int>* counts_deletions = nullptr;
};

TEST(MyThread, LivesUntilItHasRunAndNobodyHoldsIt) {
    std::promise<void> go;
    TestThread* forgotten = new TestThread([&] { go.get_future().wait(); });
    std::future<void> forgotten_gone = forgotten->deleted.get_future();
    forgotten->launch(); // holds itself now
    EXPECT_EQ(forgotten->getRefCount(), 1u);
    go.set_value();
    forgotten_gone.wait();

    bool ran = false;
    Ref<TestThread> kept(new TestThread([&] { ran = true; }));
    std::future<void> kept_gone = kept->deleted.get_future();
    kept->launch();
    kept->join();
    EXPECT_TRUE(ran);
    EXPECT_EQ(kept->getRefCount(), 1u);
    kept = nullptr;
    kept_gone.wait();
}

#ifndef _WIN32 // Its threads take any priority, and any size of stack until it is used.
TEST(MyThread, TellsWhyTheSystemRefuses) {
    std::promise<void> go;
    Ref<TestThread> thread(new TestThread([&] { go.get_future().wait(); }));
    const auto set = [&](int value) {
        return thrownMessage<MyThreadExcep>([&] { thread->setPriority(value); });
    };
    EXPECT_EQ(set(0), "SetThreadPriority failed: 3") << "it hasn't been launched";
    thread->launch();
    EXPECT_EQ(set(1), "SetThreadPriority failed: 22");
    EXPECT_EQ(set(-1), "no exception");
    go.set_value();
    thread->join();

    // No machine has room for such a stack.
    pthread_attr_t usual;
    pthread_attr_t huge;
    ASSERT_EQ(pthread_getattr_default_np(&usual), 0);
    ASSERT_EQ(pthread_getattr_default_np(&huge), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&huge, std::size_t(1) << 47), 0);
    ASSERT_EQ(pthread_setattr_default_np(&huge), 0);
    Ref<TestThread> refused(new TestThread([] {}));
    EXPECT_EQ(thrownMessage<MyThreadExcep>([&] { refused->launch(); }), "Thread creation failed.");
    EXPECT_EQ(thrownMessage<MyThreadExcep>([] { TaskManager manager(2); }), "Thread creation failed.");
    ASSERT_EQ(pthread_setattr_default_np(&usual), 0);
    EXPECT_EQ(refused->getRefCount(), 1u);
}
#endif

TEST(TaskManager, RunsBatchAfterBatchAndDeletesEachTask) {
    constexpr std::size_t THREADS = 4;
    constexpr int TASKS = 500;
    std::atomic<int> deleted = 0;
    // A place for each thread, without a lock: the sanitizer sees if two tasks had the same at once.
    std::vector<int> sums(THREADS);
    TaskManager manager(THREADS);
    EXPECT_EQ(manager.getNumThreads(), THREADS);
    manager.waitForTasks(); // of none
    for (int batch = 1; batch <= 2; ++batch) {
        for (int i = 0; i < TASKS; ++i) {
            auto task = std::make_unique<FunctionTask>([&, i](std::size_t thread) { sums.at(thread) += i; });
            task->counts_deletions = &deleted;
            manager.addTask(std::move(task));
        }
        manager.waitForTasks();
        EXPECT_EQ(sums[0] + sums[1] + sums[2] + sums[3], batch * TASKS * (TASKS - 1) / 2);
        EXPECT_EQ(deleted, batch * TASKS);
    }
}

TEST(TaskManager, ThrowsAgainWhatATaskThrewOnce) {
    TaskManager manager(2);
    std::atomic<int> done = 0;
    manager.addTask(
        std::make_unique<FunctionTask>([](std::size_t) { throw std::runtime_error("no memory"); }));
    for (int i = 0; i < 10; ++i)
        manager.addTask(std::make_unique<FunctionTask>([&](std::size_t) { ++done; }));
    EXPECT_EQ(thrownMessage<std::runtime_error>([&] { manager.waitForTasks(); }), "no memory");
    EXPECT_EQ(done, 10);
    manager.waitForTasks();
}

TEST(TaskManager, DropsWhatNobodyHasBegunAtItsEnd) {
    std::atomic<int> deleted = 0;
    std::atomic<int> ran = 0;
    std::promise<void> begun;
    std::promise<void> go;
    std::future<void> may_go = go.get_future();
    auto manager = std::make_unique<TaskManager>(1);
    for (int i = 0; i < 5; ++i) {
        auto task = std::make_unique<FunctionTask>([&](std::size_t) {
            if (++ran == 1) {
                begun.set_value();
                may_go.wait();
            }
        });
        task->counts_deletions = &deleted;
        manager->addTask(std::move(task));
    }
    begun.get_future().wait();
    std::thread releaser([&] { go.set_value(); });
    manager.reset();
    releaser.join();
    EXPECT_EQ(deleted, 5);
    EXPECT_GE(ran, 1);
}

} // namespace
