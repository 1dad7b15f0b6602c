// SPDX-License-Identifier: MIT
#include "materials/perlin_noise.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

/// The permutation begins 151, 160; the cell at the origin has the corners' hashes p[17] = 4 modulo 16,
/// p[119] = 6, p[182] = 12, p[248] = 0 at z = 0 and 7, 4, 14, 3 at z = 1 (in the order of x, then y).
TEST(PerlinNoise, IsWhatTheTableGivesByHand) {
    const struct {
        NoisePoint point;
        double value;
    } cases[] = {
        // Directions (1, 0, 1) and (1, 0, -1) left and right: 0.25 * (1 - f) - 0.75 * f, f = 0.103515625.
        {{0.25, 0, 0}, 0.146484375},
        {{0.5, 0, 0}, 0.0},
        // Means of 8 dot products: (1 - 1 + 0 - 1 + 0 - 1 - 1 + 1) / 8.
        {{0.5, 0.5, 0.5}, -0.25},
        // Of the reference implementation.
        {{3.14, 42, 7}, 0.13691995878400012},
    };
    for (const auto& [point, value] : cases) {
        EXPECT_NEAR(perlinNoise(point), value, 1e-12) << point.x << " " << point.y << " " << point.z;
        const NoisePoint wrapped{point.x - 256, point.y + 512, point.z - 256};
        EXPECT_NEAR(perlinNoise(wrapped), value, 1e-9) << "it repeats every 256";
    }
}

TEST(PerlinNoise, IsNothingAtWholeAndImpossibleCoordinates) {
    const double infinity = std::numeric_limits<double>::infinity();
    for (const NoisePoint& point :
         {NoisePoint{0, 0, 0}, NoisePoint{-3, 17, 255}, NoisePoint{1e30, -1e300, 4},
          NoisePoint{infinity, 0, 0}, NoisePoint{0, -infinity, 0}, NoisePoint{0, 0, std::nan("")}}) {
        EXPECT_EQ(perlinNoise(point), 0.0) << point.x;
        EXPECT_TRUE(std::isfinite(fractalNoise(point))) << point.x;
    }
}

} // namespace
