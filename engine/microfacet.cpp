// SPDX-License-Identifier: MIT
#include "engine/microfacet.h"

#include "engine/sampling.h"

#include <algorithm>
#include <cmath>

namespace engine {

float Microfacets::density(const Vec& half) const {
    if (half.z <= 0.0f) {
        return 0.0f;
    }
    const float a2 = alpha_ * alpha_;
    const float across = half.x * half.x + half.y * half.y;
    const float root = half.z * half.z + across / a2;
    return 1.0f / (PI * a2 * root * root);
}

float Microfacets::lambda(const Vec& v) const {
    const float across = v.x * v.x + v.y * v.y;
    if (v.z == 0.0f) {
        return INFINITY;
    }
    return 0.5f * (std::sqrt(1.0f + alpha_ * alpha_ * across / (v.z * v.z)) - 1.0f);
}

float Microfacets::shadowing(const Vec& a, const Vec& b) const {
    return 1.0f / (1.0f + lambda(a) + lambda(b));
}

Vec Microfacets::sample(const Vec& out, Random& random) const {
    const Vec stretched = normalise({alpha_ * out.x, alpha_ * out.y, out.z});
    const float across = stretched.x * stretched.x + stretched.y * stretched.y;
    const Vec t1 = across > 0.0f ? Vec{-stretched.y, stretched.x, 0} / std::sqrt(across) : Vec{1, 0, 0};
    const Vec t2 = cross(stretched, t1);
    const float radius = std::sqrt(random.next());
    const float angle = 2 * PI * random.next();
    const float p1 = radius * std::cos(angle);
    const float s = 0.5f * (1.0f + stretched.z);
    const float p2 = (1.0f - s) * std::sqrt(std::max(0.0f, 1.0f - p1 * p1)) + s * radius * std::sin(angle);
    const float up = std::sqrt(std::max(0.0f, 1.0f - p1 * p1 - p2 * p2));
    const Vec half = t1 * p1 + t2 * p2 + stretched * up;
    return normalise({alpha_ * half.x, alpha_ * half.y, std::max(1e-6f, half.z)});
}

float Microfacets::samplePdf(const Vec& out, const Vec& half) const {
    if (out.z <= 0.0f) {
        return 0.0f;
    }
    return std::max(0.0f, dot(out, half)) * density(half) / (out.z * (1.0f + lambda(out)));
}

float roughnessOfExponent(float exponent) {
    // Below 0.001 single floats can't tell the highlight's density any more.
    return std::clamp(std::sqrt(2.0f / (std::max(0.0f, exponent) + 2.0f)), 0.001f, 1.0f);
}

} // namespace engine
