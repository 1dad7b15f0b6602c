// SPDX-License-Identifier: MIT
#include "headless/model/rotation.h"

#include "foundation/trigonometry.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

struct Quaternion {
    double w, x, y, z;
};

Vector toVector(double x, double y, double z) {
    return {static_cast<float>(x), static_cast<float>(y), static_cast<float>(z)};
}

Matrix toMatrix(const Quaternion& q) {
    const double s = 2.0 / (q.w * q.w + q.x * q.x + q.y * q.y + q.z * q.z);
    Matrix m;
    m.axisX =
        toVector(1.0 - s * (q.y * q.y + q.z * q.z), s * (q.x * q.y + q.w * q.z), s * (q.x * q.z - q.w * q.y));
    m.axisY =
        toVector(s * (q.x * q.y - q.w * q.z), 1.0 - s * (q.x * q.x + q.z * q.z), s * (q.y * q.z + q.w * q.x));
    m.axisZ =
        toVector(s * (q.x * q.z + q.w * q.y), s * (q.y * q.z - q.w * q.x), 1.0 - s * (q.x * q.x + q.y * q.y));
    return m;
}

/// From unit axes. The largest component is found first, so that no root of a small difference is taken
/// (S. Shepperd, "Quaternion from Rotation Matrix", 1978).
Quaternion toQuaternion(const Matrix& m) {
    const double xx = static_cast<double>(m.axisX.x), yy = static_cast<double>(m.axisY.y),
                 zz = static_cast<double>(m.axisZ.z);
    const double yz = static_cast<double>(m.axisY.z), zy = static_cast<double>(m.axisZ.y);
    const double zx = static_cast<double>(m.axisZ.x), xz = static_cast<double>(m.axisX.z);
    const double xy = static_cast<double>(m.axisX.y), yx = static_cast<double>(m.axisY.x);
    const double squares[] = {1.0 + xx + yy + zz, 1.0 + xx - yy - zz, 1.0 - xx + yy - zz, 1.0 - xx - yy + zz};
    switch (std::max_element(squares, squares + 4) - squares) {
    case 0:
        return {squares[0], yz - zy, zx - xz, xy - yx};
    case 1:
        return {yz - zy, squares[1], xy + yx, zx + xz};
    case 2:
        return {zx - xz, xy + yx, squares[2], yz + zy};
    default:
        return {xy - yx, zx + xz, yz + zy, squares[3]};
    }
}

Quaternion normalized(const Quaternion& q) {
    const double length = std::sqrt(q.w * q.w + q.x * q.x + q.y * q.y + q.z * q.z);
    return {q.w / length, q.x / length, q.y / length, q.z / length};
}

Quaternion mix(const Quaternion& a, double s, const Quaternion& b, double t) {
    return {a.w * s + b.w * t, a.x * s + b.x * t, a.y * s + b.y * t, a.z * s + b.z * t};
}

/// A unit vector perpendicular to the given unit vector.
Vector perpendicular(const Vector& v) {
    const Vector other = std::fabs(v.y) < 0.9f ? Vector(0.0f, 1.0f, 0.0f) : Vector(1.0f, 0.0f, 0.0f);
    return Cross(other, v).GetNormalized();
}

} // namespace

Matrix rotationFromHPB(const Vector& hpb) {
    const double h = static_cast<double>(hpb.x), p = static_cast<double>(hpb.y),
                 b = static_cast<double>(hpb.z);
    const double sh = Quenza::sine(h), ch = Quenza::cosine(h), sp = Quenza::sine(p), cp = Quenza::cosine(p),
                 sb = Quenza::sine(b), cb = Quenza::cosine(b);
    Matrix m;
    m.axisX = toVector(ch * cb - sh * sp * sb, -cp * sb, sh * cb + ch * sp * sb);
    m.axisY = toVector(ch * sb + sh * sp * cb, cp * cb, sh * sb - ch * sp * cb);
    m.axisZ = toVector(-sh * cp, sp, ch * cp);
    return m;
}

Vector hpbFromRotation(const Matrix& rotation) {
    const Vector x = rotation.axisX.GetNormalized(), y = rotation.axisY.GetNormalized(),
                 z = rotation.axisZ.GetNormalized();
    const float level = std::hypot(z.x, z.z);
    const float pitch = std::atan2(z.y, level);
    if (level < 1e-6f) {
        return {std::atan2(x.z, x.x), pitch, 0.0f};
    }
    return {std::atan2(-z.x, z.z), pitch, std::atan2(-x.y, y.y)};
}

Matrix interpolateRotation(const Matrix& from, const Matrix& to, double t) {
    const Quaternion a = normalized(toQuaternion(splitMatrix(from).rotation));
    Quaternion b = normalized(toQuaternion(splitMatrix(to).rotation));
    double cosine = a.w * b.w + a.x * b.x + a.y * b.y + a.z * b.z;
    if (cosine < 0.0) {
        b = mix(b, -1.0, b, 0.0);
        cosine = -cosine;
    }
    if (cosine > 0.999999) {
        return toMatrix(mix(a, 1.0 - t, b, t));
    }
    const double angle = std::acos(cosine);
    return toMatrix(mix(a, Quenza::sine((1.0 - t) * angle), b, Quenza::sine(t * angle)));
}

Matrix rotationFromQuaternion(double w, double x, double y, double z) {
    return toMatrix({w, x, y, z});
}

MatrixParts splitMatrix(const Matrix& matrix) {
    MatrixParts parts;
    parts.position = matrix.off;
    parts.scale = {matrix.axisX.GetLength(), matrix.axisY.GetLength(), matrix.axisZ.GetLength()};
    // Z and Y keep their directions as far as they are perpendicular; X follows.
    Vector z = matrix.axisZ.GetNormalized();
    if (z == Vector()) {
        z = Cross(matrix.axisX, matrix.axisY).GetNormalized();
    }
    if (z == Vector()) {
        const Vector known = matrix.axisX == Vector() ? matrix.axisY : matrix.axisX;
        z = known == Vector() ? Vector(0.0f, 0.0f, 1.0f) : perpendicular(known.GetNormalized());
    }
    Vector y = (matrix.axisY - z * Dot(matrix.axisY, z)).GetNormalized();
    if (y == Vector()) {
        y = Cross(z, matrix.axisX).GetNormalized();
    }
    if (y == Vector()) {
        y = perpendicular(z);
    }
    parts.rotation.axisX = Cross(y, z);
    parts.rotation.axisY = y;
    parts.rotation.axisZ = z;
    if (matrix.GetDeterminant() < 0.0f) {
        parts.scale.x = -parts.scale.x;
    }
    return parts;
}

Matrix joinMatrix(const MatrixParts& parts) {
    return {parts.position, parts.rotation.axisX * parts.scale.x, parts.rotation.axisY * parts.scale.y,
            parts.rotation.axisZ * parts.scale.z};
}

} // namespace headless
