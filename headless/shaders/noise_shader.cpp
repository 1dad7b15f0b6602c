// SPDX-License-Identifier: MIT
#include "headless/shaders/blend_mode.h"
#include "headless/shaders/host_shader.h"
#include "headless/shaders/shader_ids.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

constexpr float LUMPS_PER_TEXTURE = 10.0f;
constexpr int32_t MAX_OCTAVES = 16;

/// Spreads the corners of a lattice over all 32 bits.
uint32_t hashOf(int32_t x, int32_t y, int32_t z, uint32_t seed) {
    uint32_t hash = seed * 0x9E3779B1u;
    for (const int32_t part : {x, y, z}) {
        hash = (hash ^ static_cast<uint32_t>(part)) * 0x85EBCA6Bu;
        hash ^= hash >> 13;
    }
    hash *= 0xC2B2AE35u;
    return hash ^ (hash >> 16);
}

/// Product of an offset with the gradient of a corner: one of the twelve directions to the middles of a
/// cube's edges.
float slope(uint32_t hash, float x, float y, float z) {
    const uint32_t direction = hash % 12;
    const float first = direction < 8 ? x : y;
    const float second = direction < 4 ? y : z;
    return ((hash & 0x10000u) ? first : -first) + ((hash & 0x20000u) ? second : -second);
}

float fade(float t) {
    return t * t * t * (t * (t * 6.0f - 15.0f) + 10.0f);
}

float lerp(float a, float b, float t) {
    return a + (b - a) * t;
}

/// Gradient noise, about -1 to 1.
float gradientNoise(const Vector& p, uint32_t seed) {
    const float fx = std::floor(p.x);
    const float fy = std::floor(p.y);
    const float fz = std::floor(p.z);
    const auto x = static_cast<int32_t>(fx);
    const auto y = static_cast<int32_t>(fy);
    const auto z = static_cast<int32_t>(fz);
    const Vector in(p.x - fx, p.y - fy, p.z - fz);
    const float u = fade(in.x);
    const float v = fade(in.y);
    const auto corner = [&](int32_t i, int32_t j, int32_t k) {
        return slope(hashOf(x + i, y + j, z + k, seed), in.x - static_cast<float>(i),
                     in.y - static_cast<float>(j), in.z - static_cast<float>(k));
    };
    const auto plane = [&](int32_t k) {
        return lerp(lerp(corner(0, 0, k), corner(1, 0, k), u), lerp(corner(0, 1, k), corner(1, 1, k), u), v);
    };
    return lerp(plane(0), plane(1), fade(in.z));
}

/// Clouds between two colours.
class NoiseShader : public HostShader {
public:
    explicit NoiseShader(const BaseContainer& data)
        : colour1_(data.GetVector(NOISE_COLOR1)), colour2_(data.GetVector(NOISE_COLOR2, {1.0f, 1.0f, 1.0f})),
          seed_(static_cast<uint32_t>(data.GetLong(NOISE_SEED))),
          octaves_(std::clamp(data.GetLong(NOISE_OCTAVES, 1), 1, MAX_OCTAVES)),
          frequency_(LUMPS_PER_TEXTURE / std::max(std::abs(data.GetReal(NOISE_SCALE, 1.0f)), 1e-6f)) {}

    Vector sample(const ChannelData& channel) const override {
        Vector p = channel.p * frequency_;
        float sum = 0.0f;
        float amplitude = 0.5f;
        for (int32_t octave = 0; octave < octaves_; ++octave) {
            // Beyond it the lattice has no whole numbers; nor are there any for what isn't a number.
            constexpr float LATTICE_END = 1e9f;
            if (!(std::abs(p.x) < LATTICE_END && std::abs(p.y) < LATTICE_END &&
                  std::abs(p.z) < LATTICE_END)) {
                break;
            }
            sum += amplitude * gradientNoise(p, seed_ + static_cast<uint32_t>(octave));
            amplitude *= 0.5f;
            p = p * 2.0f;
        }
        return mix(colour1_, colour2_, std::clamp(0.5f + sum, 0.0f, 1.0f));
    }

private:
    Vector colour1_;
    Vector colour2_;
    uint32_t seed_;
    int32_t octaves_;
    float frequency_;
};

} // namespace

std::unique_ptr<HostShader> makeNoise(ShaderSource& source) {
    return std::make_unique<NoiseShader>(source.data());
}

} // namespace headless
