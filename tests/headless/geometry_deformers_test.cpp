// SPDX-License-Identifier: MIT
#include "headless/geometry/deformers.h"

#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "headless/geometry_checks.h"

namespace headless::geometry {
namespace {

using std::numbers::pi;

BendParameters bendBy(double strength, DeformMode mode = DeformMode::Limited) {
    BendParameters parameters;
    parameters.size = {20, 100, 20};
    parameters.strength = strength;
    parameters.mode = mode;
    parameters.keepAxisLength = true;
    return parameters;
}

TEST(Deformers, BendModes) {
    const double quarter = pi / 2.0;
    const float radius = static_cast<float>(100.0 / quarter);
    const auto bent = [&](Vector p, const BendParameters& parameters) {
        EXPECT_TRUE(bend({&p, 1}, {}, parameters));
        return p;
    };
    const auto expectAt = [](const Vector& p, const Vector& expected) {
        EXPECT_LT(distance(p, expected), 1e-3) << p.x << ", " << p.y << ", " << p.z;
    };
    // The top of the box points to +X; what lies above goes on straight, what lies below stays.
    expectAt(bent({0, 50, 0}, bendBy(quarter)), {radius, radius - 50, 0});
    expectAt(bent({5, 80, 3}, bendBy(quarter)), {radius + 30, radius - 50 - 5, 3});
    expectAt(bent({5, -70, 3}, bendBy(quarter)), {5, -70, 3});
    expectAt(bent({0, 150, 0}, bendBy(quarter, DeformMode::Unlimited)), {2 * radius, -50, 0});
    expectAt(bent({0, 50, 0}, bendBy(quarter, DeformMode::WithinBox)), {radius, radius - 50, 0});
    expectAt(bent({0, 51, 0}, bendBy(quarter, DeformMode::WithinBox)), {0, 51, 0});
    expectAt(bent({11, 0, 0}, bendBy(quarter, DeformMode::WithinBox)), {11, 0, 0});

    BendParameters sideways = bendBy(quarter);
    sideways.direction = quarter;
    expectAt(bent({0, 50, 0}, sideways), {0, radius - 50, radius});

    BendParameters stretched = bendBy(quarter);
    stretched.keepAxisLength = false;
    EXPECT_NEAR(distance(bent({0, 50, 0}, stretched), {0, -50, 0}), 100.0, 1e-3)
        << "the chord keeps its length";
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
