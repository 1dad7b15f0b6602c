// SPDX-License-Identifier: MIT
#include "materials/perlin_noise.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

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
