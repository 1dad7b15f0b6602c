// SPDX-License-Identifier: MIT
#include "headless/geometry/deformers.h"

#include <limits>

#include <gtest/gtest.h>

namespace headless::geometry {
namespace {

BendParameters bendBy(double strength) {
    BendParameters parameters;
    parameters.size = {20, 100, 20};
    parameters.strength = strength;
    return parameters;
}

TEST(Deformers, BadInputLeavesThePoints) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    std::vector<Vector> points{{1, 2, 3}};
    Matrix flat;
    flat.axisX = {};
    EXPECT_FALSE(bend(points, flat, bendBy(1.0)));
    TwistParameters parameters;
    for (const float height : {0.0f, -1.0f, nan}) {
        parameters.size.y = height;
        EXPECT_FALSE(twist(points, {}, parameters));
    }
    EXPECT_EQ(points[0], Vector(1, 2, 3));
    points = {{nan, 5, 0}, {1, 2, 3}};
    EXPECT_TRUE(bend(points, {}, bendBy(1.0)));
    EXPECT_EQ(points[0].y, 5.0f);
    const Vector before = points[1];
    EXPECT_TRUE(bend(points, {}, bendBy(std::numeric_limits<double>::quiet_NaN())));
    EXPECT_EQ(points[1], before);
}

} // namespace
} // namespace headless::geometry
