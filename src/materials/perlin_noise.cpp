// SPDX-License-Identifier: MIT
#include "materials/perlin_noise.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>

namespace {

constexpr uint8_t PUBLISHED[256] = {
    151, 160, 137, 91,  90,  15,  131, 13,  201, 95,  96,  53,  194, 233, 7,   225, 140, 36,  103, 30,
    69,  142, 8,   99,  37,  240, 21,  10,  23,  190, 6,   148, 247, 120, 234, 75,  0,   26,  197, 62,
    94,  252, 219, 203, 117, 35,  11,  32,  57,  177, 33,  88,  237, 149, 56,  87,  174, 20,  125, 136,
    171, 168, 68,  175, 74,  165, 71,  134, 139, 48,  27,  166, 77,  146, 158, 231, 83,  111, 229, 122,
    60,  211, 133, 230, 220, 105, 92,  41,  55,  46,  245, 40,  244, 102, 143, 54,  65,  25,  63,  161,
    1,   216, 80,  73,  209, 76,  132, 187, 208, 89,  18,  169, 200, 196, 135, 130, 116, 188, 159, 86,
    164, 100, 109, 198, 173, 186, 3,   64,  52,  217, 226, 250, 124, 123, 5,   202, 38,  147, 118, 126,
    255, 82,  85,  212, 207, 206, 59,  227, 47,  16,  58,  17,  182, 189, 28,  42,  223, 183, 170, 213,
    119, 248, 152, 2,   44,  154, 163, 70,  221, 153, 101, 155, 167, 43,  172, 9,   129, 22,  39,  253,
    19,  98,  108, 110, 79,  113, 224, 232, 178, 185, 112, 104, 218, 246, 97,  228, 251, 34,  242, 193,
    238, 210, 144, 12,  191, 179, 162, 241, 81,  51,  145, 235, 249, 14,  239, 107, 49,  192, 214, 31,
    181, 199, 106, 157, 184, 84,  204, 176, 115, 121, 50,  45,  127, 4,   150, 254, 138, 236, 205, 93,
    222, 114, 67,  29,  24,  72,  243, 141, 128, 195, 78,  66,  215, 61,  156, 180};

/// The table twice, so that sums of an entry and a coordinate need no wrapping.
constexpr std::array<uint8_t, 512> doubled() {
    std::array<uint8_t, 512> table{};
    for (size_t i = 0; i < table.size(); ++i) {
        table[i] = PUBLISHED[i % 256];
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
