// SPDX-License-Identifier: MIT
// The clock that tests drive: who sleeps or waits for a timer goes on at its exact time.
#include "headless/runtime_fixture.h"
#include "host/dialog.h"
#include "support/thrown_message.h"

namespace headless {
namespace {

using namespace std::chrono_literals;
using Quenza::thrownMessage;

class DrivenTime : public RuntimeTest {
protected:
    DrivenTime() {
        HostOptions options;
        options.drivenClock = true;
        start(std::move(options));
        began_ = GeGetMilliSeconds();
    }
    void tell(const std::string& who) {
        host().console().print(std::to_string(GeGetMilliSeconds() - began_) + " " + who);
    }

    /// Sleeps a number of times and tells when it woke.
    class Sleeper : public C4DThread {
    public:
        Sleeper(DrivenTime& test, std::string name, uint32_t length, int times)
            : test_(test), name_(std::move(name)), length_(length), times_(times) {}
        ~Sleeper() override { End(true); }
        void Main() override {
            for (int i = 0; i < times_ && !TestBreak(); ++i) {
                GeSleep(length_);
                test_.tell(name_);
            }
            if (asksAtTheEnd) {
                ::MessageDialog(String(name_) + " asks");
            }
        }
        const char* GetThreadName() override { return name_.c_str(); }
        bool asksAtTheEnd = false;

    private:
        DrivenTime& test_;
        const std::string name_;
        const uint32_t length_;
        const int times_;
    };

    uint32_t began_;
};

TEST_F(DrivenTime, WakesEachAtItsTime) {
    Sleeper quick(*this, "quick", 30, 3);
    Sleeper slow(*this, "slow", 50, 1000);
    quick.asksAtTheEnd = true;
    quick.Start();
    slow.Start();
    host().loop().addTimer(40ms, [&] { tell("timer"); });
    host().loop().addOneShot(45ms, [&] { host().loop().post([&] { tell("posted"); }); });
    host().advance(100ms);
    EXPECT_EQ(newLines(), (Lines{"30 quick", "40 timer", "45 posted", "50 slow", "60 quick", "80 timer",
                                 "90 quick", "100 slow"}));
    EXPECT_EQ(host().messages(), Lines{"quick asks"});
    EXPECT_FALSE(quick.IsRunning());
    host().advance(49ms);
    EXPECT_EQ(newLines(), Lines{"120 timer"});
    EXPECT_EQ(GeGetMilliSeconds() - began_, 149u);
    slow.End(false);
    EXPECT_TRUE(slow.IsRunning()) << "it sleeps";
    host().advance(1ms);
    EXPECT_EQ(newLines(), Lines{"150 slow"});
    EXPECT_FALSE(slow.IsRunning());
}

TEST_F(DrivenTime, LetsAThreadGoThatSomebodyWaitsFor) {
    Sleeper sleeper(*this, "sleeper", 1'000'000, 2);
    sleeper.Start();
    host().advance(0ms);
    sleeper.End(true);
    EXPECT_EQ(newLines(), Lines{"0 sleeper"});
    sleeper.Start();
    host().advance(10ms);
    EXPECT_TRUE(sleeper.IsRunning()) << "started again, it waits for the clock again";
}

TEST_F(DrivenTime, TellsOfAMainThreadThatSleeps) {
    GeSleep(20);
    tell("main");
    EXPECT_EQ(newLines(), Lines{"20 main"});
    EXPECT_EQ(host().errors().lines(),
              Lines{"GeSleep was called by the main thread, which freezes the window"});
    stop();
    start();
    EXPECT_EQ(thrownMessage<HostError>([&] { host().advance(1ms); }),
              "The clock of this host can't be moved");
}

} // namespace
} // namespace headless
