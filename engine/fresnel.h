// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cmath>

namespace engine {

/// Share of unpolarised light that a smooth dielectric sends back. `eta` is the refractive index behind the
/// surface over that before it; `cosine` (0 to 1) belongs to the side where the light comes from.
inline float fresnelDielectric(float cosine, float eta) {
    const float sine2 = (1.0f - cosine * cosine) / (eta * eta);
    if (sine2 >= 1.0f) {
        return 1.0f;
    }
    const float behind = std::sqrt(1.0f - sine2);
    const float parallel = (eta * cosine - behind) / (eta * cosine + behind);
    const float crossed = (cosine - eta * behind) / (cosine + eta * behind);
    return 0.5f * (parallel * parallel + crossed * crossed);
}

/// The same for light from all sides: the mean weighted by the cosine.
inline float fresnelAverage(float eta) {
    constexpr int STEPS = 256;
    float sum = 0;
    for (int i = 0; i < STEPS; ++i) {
        const float cosine = (float(i) + 0.5f) / STEPS;
        sum += 2.0f * cosine * fresnelDielectric(cosine, eta) / STEPS;
    }
    return sum;
}

/// Schlick's approximation (1994) of how a metal's colour turns white towards grazing angles.
inline float schlickWeight(float cosine) {
    const float m = std::clamp(1.0f - cosine, 0.0f, 1.0f);
    return m * m * m * m * m;
}

} // namespace engine
