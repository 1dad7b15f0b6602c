// SPDX-License-Identifier: MIT
#include "headless/runtime_fixture.h"

#include <atomic>

namespace headless {
namespace {

using namespace std::chrono_literals;
using Threading = RuntimeTest;

TEST_F(Threading, EndsAThreadThatThrowsWithALine) {
    startWorking();
    EXPECT_TRUE(host().executeCommand(TEST_THROWING_THREAD));
    EXPECT_EQ(host().errors().lines(), Lines{"Thread \"Thrower\" ended with an exception: lost the thread"});
}

TEST_F(Threading, AnswersDialogCallsOfOtherThreadsOnlyWhileItCan) {
    startWorking();
    host().user().addAnswer(true);
    EXPECT_TRUE(host().executeCommand(TEST_OTHER_THREAD));
    EXPECT_EQ(newLines(), (Lines{"thread asked: no", "thread asked: yes"}));
    EXPECT_EQ(
        host().errors().lines(),
        (Lines{"QuestionDialog was called from another thread while the main thread does not wait: refused",
               "[question] From a thread? yes"}));
}

TEST_F(Threading, EndsThreadsThatThePluginLeft) {
    startWorking();
    EXPECT_TRUE(host().executeCommand(TEST_LEFT_THREAD));
    EXPECT_FALSE(host().executeCommand(TEST_LEFT_THREAD)) << "it runs already";
    EXPECT_TRUE(host().runUntil([&] { return !host().messages().empty(); }, 10s)) << "it works";
    stop();
}

TEST(MainLoopTest, RunsPostedTasksInOrderAndTimersWhenDue) {
    MainLoop loop;
    std::string order;
    int ticks = 0;
    const int timer = loop.addTimer(2ms, [&] { ++ticks; });
    loop.addOneShot(0ms, [&] { order += "once "; });
    loop.post([&] { order += "a "; });
    loop.post([&] {
        order += "b ";
        loop.post([&] { order += "c "; });
    });
    loop.runUntil([&] { return ticks == 3; });
    EXPECT_EQ(order, "a b c once ");
    loop.removeTimer(timer);
    bool late = false;
    loop.addOneShot(10ms, [&] { late = true; });
    loop.runUntil([&] { return late; });
    EXPECT_EQ(ticks, 3);
}

TEST(MainLoopTest, ATimerMayRemoveItselfAndOpenALoop) {
    MainLoop loop;
    int calls = 0;
    int timer = 0;
    timer = loop.addTimer(1ms, [&] {
        ++calls;
        bool innerDone = false;
        loop.addOneShot(5ms, [&] { innerDone = true; });
        loop.removeTimer(timer);
        loop.runUntil([&] { return innerDone; });
    });
    loop.runUntil([&] { return calls == 1; });
    EXPECT_EQ(calls, 1);
}

TEST(MainLoopTest, TakesCallsFromManyThreads) {
    constexpr int THREADS = 8;
    constexpr int CALLS = 200;
    MainLoop loop;
    int counted = 0; // no lock: all calls run on this thread
    std::atomic<int> finished{0};
    std::vector<std::thread> threads;
    EXPECT_TRUE(loop.call([&] { ++counted; })) << "the main thread calls directly";
    for (int i = 0; i < THREADS; ++i) {
        threads.emplace_back([&] {
            for (int j = 0; j < CALLS; ++j) {
                while (!loop.call([&] { ++counted; })) {
                    std::this_thread::yield();
                }
                loop.post([&] { ++counted; });
            }
            ++finished;
            loop.wake();
        });
    }
    loop.runUntil([&] { return finished == THREADS; });
    for (std::thread& thread : threads) {
        thread.join();
    }
    loop.runPosted();
    EXPECT_EQ(counted, 1 + 2 * THREADS * CALLS);
}

TEST(MainLoopTest, GivesExceptionsBackToTheCaller) {
    MainLoop loop;
    std::atomic<bool> finished{false};
    std::string got;
    std::thread thread([&] {
        try {
            while (!loop.call([] { throw std::runtime_error("from the main thread"); })) {
                std::this_thread::yield();
            }
        } catch (const std::runtime_error& error) {
            got = error.what();
        }
        finished = true;
        loop.wake();
    });
    loop.serveCallsUntil([&] { return finished.load(); });
    thread.join();
    EXPECT_EQ(got, "from the main thread");
}

TEST(ConsoleTest, KeepsLinesOfManyThreadsWhole) {
    std::string text;
    Console console([&](const std::string& line) { text += line + "\n"; });
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&console, i] {
            for (int j = 0; j < 100; ++j) {
                console.print(std::string(20, static_cast<char>('a' + i)));
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(console.lines().size(), 400u);
    EXPECT_EQ(text.size(), 400u * 21u);
}

} // namespace
} // namespace headless
