// SPDX-License-Identifier: MIT
#include "host/vector.h"

#include <gtest/gtest.h>
#include <numbers>

namespace {

constexpr float PI = std::numbers::pi_v<float>;

/// Rodrigues' formula. In a left-handed space a turn that is counter-clockwise for who looks at the tip of
/// the axis has the negative angle.
Vector turned(const Vector& v, const Vector& axis, float angle) {
    const float s = std::sin(-angle), c = std::cos(-angle);
    return v * c + Cross(axis, v) * s + axis * (Dot(axis, v) * (1.0f - c));
}

Matrix turn(const Vector& axis, float angle) {
    return {
        {}, turned({1, 0, 0}, axis, angle), turned({0, 1, 0}, axis, angle), turned({0, 0, 1}, axis, angle)};
}

void expectNear(const Matrix& actual, const Matrix& expected, const std::string& what) {
    EXPECT_LT((actual.axisX - expected.axisX).GetLength(), 2e-6f) << what;
    EXPECT_LT((actual.axisY - expected.axisY).GetLength(), 2e-6f) << what;
    EXPECT_LT((actual.axisZ - expected.axisZ).GetLength(), 2e-6f) << what;
}

} // namespace

TEST(MatrixToRotAxis, GivesTheTurnBackFromNoneToHalf) {
    const Vector axes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, -1}, {1, 1, 0}, {1, -2, 3}, {-0.001f, 1, 0.001f}};
    for (const Vector& direction : axes) {
        const Vector axis = direction.GetNormalized();
        for (const float angle : {0.0f, 1e-4f, 0.5f, PI / 2, 2.0f, 3.0f, PI - 1e-4f, PI}) {
            const Matrix matrix = turn(axis, angle);
            const AxisAngle found = MatrixToRotAxis(matrix);
            const std::string what = std::to_string(axis.x) + " " + std::to_string(angle);
            EXPECT_NEAR(found.axis.GetLength(), 1.0f, 1e-6f) << what;
            EXPECT_GE(found.angle, 0.0f);
            expectNear(turn(found.axis, found.angle), matrix, what);
        }
    }
}

TEST(MatrixToRotAxis, CountsTurnsThatLookCounterClockwiseFromTheTipAsPositive) {
    // A quarter turn about Y that takes +Z to -X.
    const AxisAngle quarter = MatrixToRotAxis({{}, {0, 0, 1}, {0, 1, 0}, {-1, 0, 0}});
    EXPECT_EQ(quarter.axis, Vector(0, 1, 0));
    EXPECT_FLOAT_EQ(quarter.angle, PI / 2);
}

TEST(MatrixToRotAxis, PassesOverScaleOffsetAndMirroring) {
    const Vector axis = Vector(1, 2, 3).GetNormalized();
    const Matrix plain = turn(axis, 1.0f);
    const Matrix scaled({7, 8, 9}, plain.axisX * 0.001f, plain.axisY * 100.0f, plain.axisZ * 3.0f);
    const Matrix mirrored({}, -plain.axisX, plain.axisY, plain.axisZ);
    for (const Matrix& matrix : {scaled, mirrored}) {
        const AxisAngle found = MatrixToRotAxis(matrix);
        expectNear(turn(found.axis, found.angle), plain, std::to_string(matrix.off.x));
    }
    const AxisAngle flat = MatrixToRotAxis({{}, {}, {}, {}});
    EXPECT_TRUE(std::isfinite(flat.angle) && std::isfinite(flat.axis.GetLength()));
}
