// SPDX-License-Identifier: MIT
#include "headless/geometry/deformers.h"

#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "headless/geometry_checks.h"

namespace headless::geometry {
namespace {

using std::numbers::pi;

/// Points on the Y axis of the deformer's box and beyond it.
std::vector<Vector> column(float from, float to, int count) {
    std::vector<Vector> points;
    for (int i = 0; i <= count; ++i) {
        points.push_back({0, from + (to - from) * static_cast<float>(i) / static_cast<float>(count), 0});
    }
    return points;
}

double lengthOf(const std::vector<Vector>& points) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i) {
        length += distance(points[i - 1], points[i]);
    }
    return length;
}

BendParameters bendBy(double strength, DeformMode mode = DeformMode::Limited) {
    BendParameters parameters;
    parameters.size = {20, 100, 20};
    parameters.strength = strength;
    parameters.mode = mode;
    parameters.keepAxisLength = true;
    return parameters;
}

TEST(Deformers, BendKeepsTheLengthOfAColumnAsAnArc) {
    for (const double strength : {0.0, 1e-6, 0.5, -1.0, pi, 7.0}) {
        std::vector<Vector> points = column(-50, 50, 1000);
        ASSERT_TRUE(bend(points, {}, bendBy(strength)));
        EXPECT_NEAR(lengthOf(points), 100.0, 0.01) << strength;
        EXPECT_EQ(points.front(), Vector(0, -50, 0));
        if (strength != 0.0) {
            const double radius = 100.0 / strength;
            const Vector centre = Vec3(radius, -50.0, 0.0).toVector();
            EXPECT_NEAR(distance(points[700], centre) / std::abs(radius), 1.0, 1e-4) << strength;
        }
    }
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

TEST(Deformers, MatrixPlacesTheDeformer) {
    // The deformer stands at (100, 0, 0) with its Y axis along the world's X.
    Matrix deformer;
    deformer.off = {100, 0, 0};
    deformer.axisX = {0, -1, 0};
    deformer.axisY = {1, 0, 0};
    Vector tip(150, 0, 0);
    ASSERT_TRUE(bend({&tip, 1}, deformer.GetInverse(), bendBy(pi / 2.0)));
    const float radius = static_cast<float>(200.0 / pi);
    EXPECT_LT(distance(tip, {50 + radius, -radius, 0}), 1e-3);
}

TEST(Deformers, TwistTaperAndBulge) {
    Vector point(10, 50, 0);
    TwistParameters twisted{{20, 100, 20}, pi / 2.0, DeformMode::Limited};
    ASSERT_TRUE(twist({&point, 1}, {}, twisted));
    EXPECT_LT(distance(point, {0, 50, 10}), 1e-4);

    std::vector<Vector> points{{10, -50, 5}, {10, 0, 5}, {10, 50, 5}};
    ASSERT_TRUE(taper(points, {}, {{20, 100, 20}, 0.8, 0.0, DeformMode::Limited}));
    EXPECT_LT(distance(points[0], {10, -50, 5}) + distance(points[1], {6, 0, 3}) +
                  distance(points[2], {2, 50, 1}),
              1e-4);

    points = {{10, -50, 5}, {10, 0, 5}, {10, 50, 5}};
    ASSERT_TRUE(bulge(points, {}, {{20, 100, 20}, 0.5, DeformMode::Limited}));
    EXPECT_LT(distance(points[0], {10, -50, 5}) + distance(points[1], {15, 0, 7.5f}) +
                  distance(points[2], {10, 50, 5}),
              1e-4);
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
