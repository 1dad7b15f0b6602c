// SPDX-License-Identifier: MIT
#include "engine/options.h"

#include <gtest/gtest.h>

namespace {

TEST(Options, NamesWhatIsWrong) {
    const struct {
        std::vector<std::string> arguments;
        const char* fault;
    } cases[] = {
        {{}, "no scene or render queue is named"},
        {{"a.qzs", "b.qzs"}, "more than one input: 'a.qzs' and 'b.qzs'"},
        {{"--spp", "3", "a.qzs"}, "unknown switch '--spp'"},
        {{"a.qzs", "-seed"}, "switch '-seed' needs a value: N"},
        {{"-seed", "12x", "a.qzs"}, "bad value '12x' for switch '-seed': N is expected"},
        {{"-seed", "", "a.qzs"}, "bad value '' for switch '-seed': N is expected"},
        {{"-p", "0", "a.qzs"}, "bad value '0' for switch '-p': PORT is expected"},
        {{"-p", "65536", "a.qzs"}, "bad value '65536' for switch '-p': PORT is expected"},
        {{"-n", "x", "a.qzs"}, "bad value 'x' for switch '-n': wm is expected"},
        {{"--thread_priority", "high", "a.qzs"},
         "bad value 'high' for switch '--thread_priority': normal|belownormal is expected"},
    };
    for (const auto& test : cases) {
        engine::Options options;
        std::string fault;
        EXPECT_FALSE(engine::parseOptions(test.arguments, options, fault)) << test.fault;
        EXPECT_EQ(fault, test.fault);
    }
}

} // namespace
