// SPDX-License-Identifier: MIT
#pragma once

#include "engine/random.h"
#include "engine/vec.h"
#include "foundation/types.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

namespace engine {

inline constexpr float PI = std::numbers::pi_v<float>;

/// Uniform on the unit disc; z is 0. The concentric mapping of Shirley and Chiu (1997).
inline Vec sampleDisc(Random& random) {
    const float a = 2.0f * random.next() - 1.0f;
    const float b = 2.0f * random.next() - 1.0f;
    if (a == 0.0f && b == 0.0f) {
        return {};
    }
    const bool wide = std::abs(a) > std::abs(b);
    const float radius = wide ? a : b;
    const float angle = wide ? PI / 4 * (b / a) : PI / 2 - PI / 4 * (a / b);
    return {radius * std::cos(angle), radius * std::sin(angle), 0.0f};
}

/// Around +z, with the density cos / pi per steradian.
inline Vec sampleCosine(Random& random) {
    Vec v = sampleDisc(random);
    v.z = std::sqrt(std::max(0.0f, 1.0f - v.x * v.x - v.y * v.y));
    return v;
}

/// Uniform over the cone about +z; `versine` is 1 - cos of its half angle. The density is
/// 1 / (2 pi versine).
inline Vec sampleCone(float versine, Random& random) {
    const float down = random.next() * versine;
    const float sine = std::sqrt(std::max(0.0f, down * (2.0f - down)));
    const float angle = 2 * PI * random.next();
    return {sine * std::cos(angle), sine * std::sin(angle), 1.0f - down};
}

/// The power heuristic of Veach (1997) for one sample each of two strategies.
inline float misWeight(float taken, float other) {
    if (std::isinf(taken)) {
        return 1.0f;
    }
    const float ratio = other / taken;
    return 1.0f / (1.0f + ratio * ratio);
}

/// Draws indices with given weights.
class Distribution {
public:
    void add(double weight) { sums_.push_back(total() + std::max(0.0, weight)); }
    double total() const { return sums_.empty() ? 0.0 : sums_.back(); }
    bool canSample() const { return total() > 0.0 && std::isfinite(total()); }
    /// The distribution can sample.
    Quenza::u64 sample(float u) const {
        const auto at = std::upper_bound(sums_.begin(), sums_.end(), double(u) * total());
        return std::min(Quenza::u64(at - sums_.begin()), Quenza::u64(sums_.size() - 1));
    }
    double probability(Quenza::u64 index) const {
        return (sums_[index] - (index == 0 ? 0.0 : sums_[index - 1])) / total();
    }

private:
    std::vector<double> sums_;
};

} // namespace engine
