// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <cstdint>

/// Three floats: a point, a direction or a colour. The host's space is left-handed with Y up.
struct Vector {
    float x = 0.0f;
    float y = 0.0f;
    float z = 0.0f;

    constexpr Vector() = default;
    constexpr Vector(float vx, float vy, float vz) : x(vx), y(vy), z(vz) {}

    constexpr Vector operator-() const { return {-x, -y, -z}; }
    constexpr Vector operator+(const Vector& v) const { return {x + v.x, y + v.y, z + v.z}; }
    constexpr Vector operator-(const Vector& v) const { return {x - v.x, y - v.y, z - v.z}; }
    constexpr Vector operator*(float s) const { return {x * s, y * s, z * s}; }
    constexpr Vector& operator+=(const Vector& v) { return *this = *this + v; }
    constexpr Vector& operator-=(const Vector& v) { return *this = *this - v; }
    constexpr Vector& operator*=(float s) { return *this = *this * s; }
    constexpr bool operator==(const Vector&) const = default;

    float GetLength() const { return std::sqrt(x * x + y * y + z * z); }
    constexpr float GetSquaredLength() const { return x * x + y * y + z * z; }
    /// Unit vector, or zero for a zero vector.
    Vector GetNormalized() const {
        const float length = GetLength();
        return length > 0.0f ? *this * (1.0f / length) : Vector();
    }
};

constexpr float Dot(const Vector& a, const Vector& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

constexpr Vector Cross(const Vector& a, const Vector& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

/// Twelve floats: an offset and three axes. A point p of the local space lies at
/// off + axisX * p.x + axisY * p.y + axisZ * p.z of the outer space.
struct Matrix {
    Vector off;
    Vector axisX{1.0f, 0.0f, 0.0f};
    Vector axisY{0.0f, 1.0f, 0.0f};
    Vector axisZ{0.0f, 0.0f, 1.0f};

    constexpr Matrix() = default;
    constexpr Matrix(const Vector& o, const Vector& ax, const Vector& ay, const Vector& az)
        : off(o), axisX(ax), axisY(ay), axisZ(az) {}

    constexpr bool operator==(const Matrix&) const = default;

    /// Transforms a direction: the offset doesn't act.
    constexpr Vector TransformDirection(const Vector& v) const {
        return axisX * v.x + axisY * v.y + axisZ * v.z;
    }
    /// Transforms a point.
    constexpr Vector operator*(const Vector& p) const { return off + TransformDirection(p); }
    /// The matrix that applies `inner` first and this one after it.
    constexpr Matrix operator*(const Matrix& inner) const {
        return {*this * inner.off, TransformDirection(inner.axisX), TransformDirection(inner.axisY),
                TransformDirection(inner.axisZ)};
    }
    /// Negative for a matrix that mirrors.
    constexpr float GetDeterminant() const { return Dot(axisX, Cross(axisY, axisZ)); }
    /// The inverse, or the identity for a matrix without one.
    Matrix GetInverse() const;
};

/// A turn about an axis: counter-clockwise when the axis points at the viewer.
struct AxisAngle {
    /// A unit vector.
    Vector axis{0.0f, 1.0f, 0.0f};
    /// Radians, 0 to pi.
    float angle = 0.0f;
};

/// The turn of a matrix: lengths of the axes and the offset don't count, nor does it when the matrix mirrors.
/// Shear distorts the result.
AxisAngle MatrixToRotAxis(const Matrix& matrix);

/// A polygon of the host: four point indices; a triangle has c equal to d. 16 bytes.
struct CPolygon {
    int32_t a = 0;
    int32_t b = 0;
    int32_t c = 0;
    int32_t d = 0;

    constexpr CPolygon() = default;
    constexpr CPolygon(int32_t pa, int32_t pb, int32_t pc) : a(pa), b(pb), c(pc), d(pc) {}
    constexpr CPolygon(int32_t pa, int32_t pb, int32_t pc, int32_t pd) : a(pa), b(pb), c(pc), d(pd) {}
    constexpr bool operator==(const CPolygon&) const = default;
    constexpr bool IsTriangle() const { return c == d; }
};

/// Texture coordinates of a polygon's four corners: u to the right, v downwards, w unused. 48 bytes.
struct UVWStruct {
    Vector a;
    Vector b;
    Vector c;
    Vector d;
    constexpr bool operator==(const UVWStruct&) const = default;
};

static_assert(sizeof(Vector) == 12 && sizeof(Matrix) == 48);
static_assert(sizeof(CPolygon) == 16 && sizeof(UVWStruct) == 48);
