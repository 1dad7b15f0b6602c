// SPDX-License-Identifier: MIT
#include "engine/noise.h"

#include "foundation/perlin_permutation.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

unsigned permuted(unsigned i) {
    return Quenza::PERLIN_PERMUTATION[i & 255];
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
