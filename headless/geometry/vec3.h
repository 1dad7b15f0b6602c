// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <optional>

#include "host/vector.h"

namespace headless::geometry {

/// The host stores single precision; formulas are worked out in double so that tiny and huge
/// objects keep their normals (a face of 1e-20 units has an area whose square no float holds).
struct Vec3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    constexpr Vec3() = default;
    constexpr Vec3(double vx, double vy, double vz) : x(vx), y(vy), z(vz) {}
    constexpr Vec3(const Vector& v)
        : x(static_cast<double>(v.x)), y(static_cast<double>(v.y)), z(static_cast<double>(v.z)) {}

    constexpr Vec3 operator-() const { return {-x, -y, -z}; }
    constexpr Vec3 operator+(const Vec3& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr Vec3 operator-(const Vec3& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr Vec3 operator*(double s) const { return {x * s, y * s, z * s}; }
    constexpr Vec3& operator+=(const Vec3& v) { return *this = *this + v; }

    Vector toVector() const { return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)}; }
    double length() const { return std::sqrt(x * x + y * y + z * z); }
    bool isFinite() const { return std::isfinite(x) && std::isfinite(y) && std::isfinite(z); }
    /// Unit vector; zero when the length is zero or not finite.
    Vec3 normalized() const {
        const double l = length();
        return l > 0.0 && std::isfinite(l) ? *this * (1.0 / l) : Vec3();
    }
};

constexpr double dot(const Vec3& a, const Vec3& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

constexpr Vec3 cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// The host's `Matrix` in double precision: p becomes off + axisX * p.x + axisY * p.y + axisZ * p.z.
struct Affine {
    Vec3 off;
    Vec3 axisX{1.0, 0.0, 0.0};
    Vec3 axisY{0.0, 1.0, 0.0};
    Vec3 axisZ{0.0, 0.0, 1.0};

    constexpr Affine() = default;
    constexpr Affine(const Matrix& m) : off(m.off), axisX(m.axisX), axisY(m.axisY), axisZ(m.axisZ) {}

    constexpr Vec3 direction(const Vec3& v) const { return axisX * v.x + axisY * v.y + axisZ * v.z; }
    constexpr Vec3 point(const Vec3& p) const { return off + direction(p); }
    constexpr double determinant() const { return dot(axisX, cross(axisY, axisZ)); }

    /// Nothing when the axes are dependent or not finite.
    std::optional<Affine> inverse() const {
        const double det = determinant();
        if (!std::isfinite(det) || det == 0.0) {
            return std::nullopt;
        }
        // The rows of the inverse are the cofactors; the axes here are its columns.
        const Vec3 rowX = cross(axisY, axisZ) * (1.0 / det);
        const Vec3 rowY = cross(axisZ, axisX) * (1.0 / det);
        const Vec3 rowZ = cross(axisX, axisY) * (1.0 / det);
        Affine result;
        result.axisX = {rowX.x, rowY.x, rowZ.x};
        result.axisY = {rowX.y, rowY.y, rowZ.y};
        result.axisZ = {rowX.z, rowY.z, rowZ.z};
        result.off = -result.direction(off);
        return result.off.isFinite() ? std::optional(result) : std::nullopt;
    }
};

} // namespace headless::geometry
