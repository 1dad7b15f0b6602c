// SPDX-License-Identifier: MIT
#include "headless/model/track.h"

#include <gtest/gtest.h>

namespace headless {

namespace {

TEST(ModelAnimation, givesTheValueBetweenKeys) {
    Track track;
    track.keys = {{0.0, GeData(0.0)}, {1.0, GeData(10.0)}, {2.0, GeData(10.0)}, {4.0, GeData(-6.0)}};
    const struct {
        Interpolation interpolation;
        double time, expected;
    } cases[] = {
        {Interpolation::linear, -1.0, 0.0},
        {Interpolation::spline, 9.0, -6.0},
        {Interpolation::spline, 1.0, 10.0},
        {Interpolation::linear, 0.25, 2.5},
        {Interpolation::linear, 2.5, 6.0},
        {Interpolation::step, 0.999, 0.0},
        // Slopes of the first span: 10 at its start, (10 - 0) / 2 at its end.
        {Interpolation::spline, 0.5, 5.625},
        // Slopes of the second: 5 at its start, (-6 - 10) / 3 at its end.
        {Interpolation::spline, 1.5, 11.29166667},
    };
    for (const auto& test : cases) {
        track.interpolation = test.interpolation;
        EXPECT_NEAR(static_cast<double>(valueAt(track, test.time).GetReal()), test.expected, 1e-5)
            << test.time;
    }
}

} // namespace

} // namespace headless
