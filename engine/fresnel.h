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

/// The same of a conductor in air with the complex refractive index `n` + i `k`.
inline double fresnelConductor(double cosine, double n, double k) {
    const double cosine2 = cosine * cosine;
    const double sine2 = 1.0 - cosine2;
    const double difference = n * n - k * k - sine2;
    const double root = std::sqrt(difference * difference + 4.0 * n * n * k * k);
    const double along = 2.0 * cosine * std::sqrt(std::max(0.0, 0.5 * (root + difference)));
    const double crossed = (root + cosine2 - along) / (root + cosine2 + along);
    const double square = cosine2 * root + sine2 * sine2;
    const double ratio =
        square + along * sine2 > 0.0 ? (square - along * sine2) / (square + along * sine2) : 1.0;
    return 0.5 * crossed * (1.0 + ratio);
}

/// Schlick's approximation (1994) of how a metal's colour turns white towards grazing angles.
inline float schlickWeight(float cosine) {
    const float m = std::clamp(1.0f - cosine, 0.0f, 1.0f);
    return m * m * m * m * m;
}

} // namespace engine
