// SPDX-License-Identifier: MIT
#include "engine/scattering.h"

#include "engine/sampling.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

RGB exponential(const RGB& coefficient, float distance) {
    return {std::exp(-coefficient.r * distance), std::exp(-coefficient.g * distance),
            std::exp(-coefficient.b * distance)};
}

float sum(const RGB& c) {
    return c.r + c.g + c.b;
}

} // namespace

float henyeyGreenstein(float cosine, float mean_cosine) {
    const float g = mean_cosine;
    const float root = std::sqrt(std::max(1e-6f, 1.0f + g * g - 2.0f * g * cosine));
    return (1.0f - g * g) / (4.0f * PI * root * root * root);
}

Vec sampleHenyeyGreenstein(const Vec& direction, float mean_cosine, Random& random) {
    const float g = mean_cosine;
    const float u = random.next();
    float cosine = 1.0f - 2.0f * u;
    if (std::abs(g) > 1e-3f) {
        const float ratio = (1.0f - g * g) / (1.0f + g - 2.0f * g * u);
        cosine = std::clamp((1.0f + g * g - ratio * ratio) / (2.0f * g), -1.0f, 1.0f);
    }
    const float sine = std::sqrt(std::max(0.0f, 1.0f - cosine * cosine));
    const float angle = 2.0f * PI * random.next();
    return Frame(direction).toWorld({sine * std::cos(angle), sine * std::sin(angle), cosine});
}

RGB transmittance(const InternalMedium* medium, float distance) {
    return medium && std::isfinite(distance) ? exponential(medium->extinction(), distance) : RGB{1.0f};
}

Flight sampleFlight(const InternalMedium& medium, float distance, const RGB& throughput, Random& random) {
    const RGB extinction = medium.extinction();
    // What a channel scatters makes it worth following; one that only absorbs needs no flights of its own.
    RGB chance = throughput * medium.scattering;
    chance = {chance.r > 0.0f ? throughput.r : 0.0f, chance.g > 0.0f ? throughput.g : 0.0f,
              chance.b > 0.0f ? throughput.b : 0.0f};
    Flight flight;
    if (!(sum(chance) > 0.0f)) {
        flight.weight = transmittance(&medium, distance);
        return flight;
    }
    chance /= sum(chance);
    const float pick = random.next();
    const float rate = pick < chance.r              ? extinction.r
                       : pick < chance.r + chance.g ? extinction.g
                                                    : extinction.b;
    const float way = rate > 0.0f ? -std::log(1.0f - random.next()) / rate : INFINITY;
    if (way < distance) {
        const RGB left = exponential(extinction, way);
        flight.scattered = true;
        flight.distance = way;
        flight.weight = medium.scattering * left / std::max(1e-30f, sum(chance * extinction * left));
    } else {
        const RGB left = std::isfinite(distance) ? exponential(extinction, distance) : RGB{1.0f};
        flight.weight = left / std::max(1e-30f, sum(chance * left));
    }
    return flight;
}

} // namespace engine
