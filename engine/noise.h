// SPDX-License-Identifier: MIT
#pragma once

#include "engine/vec.h"

namespace engine {

/// Gradient noise of -1 to 1, zero at whole coordinates. Perlin, "Improving Noise", SIGGRAPH 2002, with the
/// permutation table published there; it repeats every 256. What isn't finite, or is beyond 1e9, gives 0.
float perlinNoise(const Vec& p);

inline constexpr int MAX_OCTAVES = 16;

/// Octaves of noise, each at 1.99 times the frequency and half the amplitude of the one before; they share
/// the origin. From 1 to MAX_OCTAVES of them.
float perlinFbm(const Vec& p, int octaves);

} // namespace engine
