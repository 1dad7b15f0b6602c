// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/vec.h"

#include <cmath>

namespace engine {

/// A point, direction or normal of scene space: metres, z upwards.
struct Vec {
    float x = 0, y = 0, z = 0;

    constexpr Vec operator+(const Vec& b) const { return {x + b.x, y + b.y, z + b.z}; }
    constexpr Vec operator-(const Vec& b) const { return {x - b.x, y - b.y, z - b.z}; }
    constexpr Vec operator-() const { return {-x, -y, -z}; }
    constexpr Vec operator*(float s) const { return {x * s, y * s, z * s}; }
    constexpr Vec operator/(float s) const { return *this * (1.0f / s); }
    constexpr Vec& operator+=(const Vec& b) { return *this = *this + b; }
    constexpr Vec& operator*=(float s) { return *this = *this * s; }
};

constexpr Vec operator*(float s, const Vec& v) {
    return v * s;
}

constexpr float dot(const Vec& a, const Vec& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

constexpr Vec cross(const Vec& a, const Vec& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline float length(const Vec& v) {
    return std::sqrt(dot(v, v));
}

/// A vector without length stays as it is.
inline Vec normalise(const Vec& v) {
    const float squared = dot(v, v);
    return squared > 0.0f ? v * (1.0f / std::sqrt(squared)) : v;
}

inline Vec toVec(const Quenza::Vec3d& v) {
    return {float(v.x), float(v.y), float(v.z)};
}

inline Vec toVec(const Quenza::Vec3f& v) {
    return {v.x, v.y, v.z};
}

/// A right-handed orthonormal basis around `normal`.
struct Frame {
    Vec tangent, bitangent, normal;

    Frame() = default;
    /// `n` has length 1. The construction without branches of Duff et al., "Building an Orthonormal Basis,
    /// Revisited", JCGT 2017.
    explicit Frame(const Vec& n) : normal(n) {
        const float sign = std::copysign(1.0f, n.z);
        const float a = -1.0f / (sign + n.z);
        const float b = n.x * n.y * a;
        tangent = {1.0f + sign * n.x * n.x * a, sign * b, -sign * n.x};
        bitangent = {b, sign + n.y * n.y * a, -n.y};
    }

    Vec toWorld(const Vec& v) const { return tangent * v.x + bitangent * v.y + normal * v.z; }
    Vec toLocal(const Vec& v) const { return {dot(v, tangent), dot(v, bitangent), dot(v, normal)}; }
};

} // namespace engine
