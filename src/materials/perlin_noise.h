// SPDX-License-Identifier: MIT
#pragma once

/// A place in the space of a noise.
struct NoisePoint {
    double x;
    double y;
    double z;
};

/// Ken Perlin's improved noise (SIGGRAPH 2002, with the permutation table of his reference implementation):
/// about -1 to 1, 0 at whole coordinates, repeated every 256. 0 where a coordinate is no finite number.
double perlinNoise(const NoisePoint& point);
/// Eight octaves of the noise: each 1.99 times as fine and half as strong as the one before.
double fractalNoise(const NoisePoint& point);
