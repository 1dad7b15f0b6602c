// SPDX-License-Identifier: MIT
#include "scene/transform_path.h"

#include "scene/rotation.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace Quenza {
namespace {

constexpr double QUARTER_TURN = std::numbers::pi / 2;

Vector<KeyFrame> keysAt(const std::vector<double>& times) {
    Vector<KeyFrame> keys;
    for (const double time : times)
        keys.push_back(KeyFrame{{0, 0, 0}, time, {0, 0, 1}, 0});
    return keys;
}

std::string failure(const Matrix3d& rotation, const std::vector<double>& times) {
    return thrownMessage<TransformPathExcep>([&] { TransformPath(rotation, 1.0, keysAt(times)); });
}

TEST(TransformPathTest, ChecksKeyframes) {
    const Matrix3d singular{{1, 2, 3, 4, 5, 6, 7, 8, 9}};
    const Matrix3d identity = Matrix3d::identity();
    EXPECT_EQ(failure(singular, {}), "Must be at least one frame.");
    EXPECT_EQ(failure(singular, {1, 0}), "transformation matrix is not invertible");
    EXPECT_EQ(failure(Matrix3d{}, {0}), "transformation matrix is not invertible");
    EXPECT_EQ(failure(Matrix3d{{NAN, 0, 0, 0, 1, 0, 0, 0, 1}}, {0}),
              "transformation matrix is not invertible");
    EXPECT_EQ(failure(Matrix3d{{1e-9, 0, 0, 0, 1, 0, 0, 0, 1e9}}, {0}), "no exception");
    EXPECT_EQ(failure(identity, {0.5}), "no exception");
    EXPECT_EQ(failure(identity, {0.1, 0.9}), "First frame must have time <= 0.0");
    EXPECT_EQ(failure(identity, {0, 0.9}), "Last frame must have time >= 1.0");
    EXPECT_EQ(failure(identity, {0, 0.5, 0.5, 1}), "Frame times must be strictly increasing.");
    EXPECT_EQ(failure(identity, {-1, 0.5, 2}), "no exception");
}

TEST(TransformPathTest, SweepsTightBoxesWithoutTurning) {
    Vector<KeyFrame> keys = keysAt({0, 1});
    keys[1].pos = {5, 0, -1};
    for (KeyFrame& key : keys)
        key.rotation_angle = QUARTER_TURN; // about z: x goes to y
    Vec3d min;
    Vec3d max;
    TransformPath(Matrix3d{{3, 0, 0, 0, 1, 0, 0, 0, 1}}, 2.0, keys)
        .getSweptBox({0, 0, 0}, {1, 1, 1}, min, max);
    const double expected[6] = {-2, 0, -1, 5, 6, 2};
    const double found[6] = {min.x, min.y, min.z, max.x, max.y, max.z};
    for (int i = 0; i < 6; ++i)
        EXPECT_NEAR(found[i], expected[i], 1e-12);
}

TEST(TransformPathTest, HoldsTheObjectWhileItTurns) {
    Vector<KeyFrame> keys = keysAt({0, 1});
    keys[1].rotation_angle = 2 * QUARTER_TURN;
    keys[1].pos = {1, 0, 0};
    Vec3d min;
    Vec3d max;
    TransformPath(Matrix3d::identity(), 1.0, keys).getSweptBox({2, 0, 0}, {4, 0, 0}, min, max);
    for (int step = 0; step <= 20; ++step) {
        const double t = step / 20.0;
        const double x = t + 4 * std::cos(t * 2 * QUARTER_TURN);
        const double y = 4 * std::sin(t * 2 * QUARTER_TURN);
        EXPECT_TRUE(x >= min.x && x <= max.x && y >= min.y && y <= max.y);
    }
}

} // namespace
} // namespace Quenza
