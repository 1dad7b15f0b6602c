// SPDX-License-Identifier: MIT
#include "headless/runtime_fixture.h"
#include "support/thrown_message.h"

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

TEST_F(Threading, TellsOfAMainThreadThatSleepsAndMovesADrivenClockAlone) {
    HostOptions options;
    options.drivenClock = true;
    start(std::move(options));
    const uint32_t began = GeGetMilliSeconds();
    GeSleep(20);
    EXPECT_EQ(GeGetMilliSeconds() - began, 20u);
    EXPECT_EQ(host().errors().lines(),
              Lines{"GeSleep was called by the main thread, which freezes the window"});
    stop();
    start();
    EXPECT_EQ(Quenza::thrownMessage<HostError>([&] { host().advance(1ms); }),
              "The clock of this host can't be moved");
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

} // namespace
} // namespace headless
