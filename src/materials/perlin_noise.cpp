// SPDX-License-Identifier: MIT
#include "materials/perlin_noise.h"

#include "foundation/perlin_permutation.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

/// The table twice, so that sums of an entry and a coordinate need no wrapping.
constexpr std::array<uint8_t, 512> doubled() {
    std::array<uint8_t, 512> table{};
    for (size_t i = 0; i < table.size(); ++i) {
        table[i] = Quenza::PERLIN_PERMUTATION[i % 256];
    }
    return table;
}
constexpr std::array<uint8_t, 512> PERMUTATION = doubled();

double fade(double t) {
    return ((6.0 * t - 15.0) * t + 10.0) * t * t * t;
}

double lerp(double t, double a, double b) {
    return a + t * (b - a);
}

/// The dot product with one of 12 directions, to the middles of a cube's edges; 4 of them count twice.
double gradient(size_t hash, double x, double y, double z) {
    const size_t h = hash & 15;
    const double u = h < 8 ? x : y;
    const double v = h < 4 ? y : (h == 12 || h == 14 ? x : z);
    return ((h & 1) == 0 ? u : -u) + ((h & 2) == 0 ? v : -v);
}

/// Number of the cell in which a coordinate lies, 0 to 255.
size_t cellOf(double floored) {
    return static_cast<size_t>(floored - 256.0 * std::floor(floored / 256.0)) & 255;
}

} // namespace

double perlinNoise(const NoisePoint& point) {
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z)) {
        return 0.0;
    }
    const auto& p = PERMUTATION;
    const double floorX = std::floor(point.x);
    const double floorY = std::floor(point.y);
    const double floorZ = std::floor(point.z);
    const size_t cellX = cellOf(floorX);
    const size_t cellY = cellOf(floorY);
    const size_t cellZ = cellOf(floorZ);
    const double x = point.x - floorX;
    const double y = point.y - floorY;
    const double z = point.z - floorZ;
    const double u = fade(x);
    const double v = fade(y);
    const double w = fade(z);
    const size_t a = p[cellX] + cellY;
    const size_t aa = p[a] + cellZ;
    const size_t ab = p[a + 1] + cellZ;
    const size_t b = p[cellX + 1] + cellY;
    const size_t ba = p[b] + cellZ;
    const size_t bb = p[b + 1] + cellZ;
    const double near = lerp(v, lerp(u, gradient(p[aa], x, y, z), gradient(p[ba], x - 1, y, z)),
                             lerp(u, gradient(p[ab], x, y - 1, z), gradient(p[bb], x - 1, y - 1, z)));
    const double far =
        lerp(v, lerp(u, gradient(p[aa + 1], x, y, z - 1), gradient(p[ba + 1], x - 1, y, z - 1)),
             lerp(u, gradient(p[ab + 1], x, y - 1, z - 1), gradient(p[bb + 1], x - 1, y - 1, z - 1)));
    return lerp(w, near, far);
}

double fractalNoise(const NoisePoint& point) {
    double sum = 0.0;
    double frequency = 1.0;
    double amplitude = 1.0;
    for (int octave = 0; octave < 8; ++octave) {
        sum += amplitude * perlinNoise({point.x * frequency, point.y * frequency, point.z * frequency});
        frequency *= 1.99;
        amplitude *= 0.5;
    }
    return sum;
}
