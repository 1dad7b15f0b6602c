// SPDX-License-Identifier: MIT
#include "engine/noise.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace engine {

namespace {

constexpr std::array<unsigned char, 256> PERMUTATION = {
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

unsigned permuted(unsigned i) {
    return PERMUTATION[i & 255];
}

float fade(float t) {
    return ((6.0f * t - 15.0f) * t + 10.0f) * t * t * t;
}

float mix(float t, float a, float b) {
    return a + t * (b - a);
}

/// The dot product with one of the twelve directions to the edges' middles of a cube, four of them twice.
float gradient(unsigned hash, float x, float y, float z) {
    const unsigned h = hash & 15;
    const float u = h < 8 ? x : y;
    const float v = h < 4 ? y : (h == 12 || h == 14 ? x : z);
    return ((h & 1) == 0 ? u : -u) + ((h & 2) == 0 ? v : -v);
}

/// A coordinate's cell and the place in it.
struct Cell {
    unsigned index;
    float rest;

    explicit Cell(float coordinate) {
        const float whole = std::floor(coordinate);
        index = unsigned(int(whole)) & 255;
        rest = coordinate - whole;
    }
};

bool isUsable(float coordinate) {
    return std::abs(coordinate) < 1e9f;
}

} // namespace

float perlinNoise(const Vec& p) {
    if (!isUsable(p.x) || !isUsable(p.y) || !isUsable(p.z)) {
        return 0.0f;
    }
    const Cell i(p.x), j(p.y), k(p.z);
    const float x = i.rest, y = j.rest, z = k.rest;
    const float u = fade(x), v = fade(y), w = fade(z);
    const unsigned a = permuted(i.index) + j.index;
    const unsigned b = permuted(i.index + 1) + j.index;
    const unsigned aa = permuted(a) + k.index, ab = permuted(a + 1) + k.index;
    const unsigned ba = permuted(b) + k.index, bb = permuted(b + 1) + k.index;
    const float near =
        mix(v, mix(u, gradient(permuted(aa), x, y, z), gradient(permuted(ba), x - 1, y, z)),
            mix(u, gradient(permuted(ab), x, y - 1, z), gradient(permuted(bb), x - 1, y - 1, z)));
    const float far = mix(
        v, mix(u, gradient(permuted(aa + 1), x, y, z - 1), gradient(permuted(ba + 1), x - 1, y, z - 1)),
        mix(u, gradient(permuted(ab + 1), x, y - 1, z - 1), gradient(permuted(bb + 1), x - 1, y - 1, z - 1)));
    return mix(w, near, far);
}

float perlinFbm(const Vec& p, int octaves) {
    float sum = 0, amplitude = 1, frequency = 1;
    for (int i = std::clamp(octaves, 1, MAX_OCTAVES); i > 0; --i) {
        sum += amplitude * perlinNoise(p * frequency);
        amplitude *= 0.5f;
        frequency *= 1.99f;
    }
    return sum;
}

} // namespace engine
