// SPDX-License-Identifier: MIT
#include "host/vector.h"

Matrix Matrix::GetInverse() const {
    // In doubles: axes of 1e-6 or 1e7 are everyday values, and their product leaves the floats' range.
    struct Double3 {
        double x, y, z;
    };
    const auto cross = [](const Vector& a, const Vector& b) {
        return Double3{double(a.y) * b.z - double(a.z) * b.y, double(a.z) * b.x - double(a.x) * b.z,
                       double(a.x) * b.y - double(a.y) * b.x};
    };
    const Double3 rowX = cross(axisY, axisZ);
    const Double3 rowY = cross(axisZ, axisX);
    const Double3 rowZ = cross(axisX, axisY);
    const double determinant = axisX.x * rowX.x + axisX.y * rowX.y + axisX.z * rowX.z;
    if (determinant == 0.0 || !std::isfinite(determinant)) {
        return Matrix();
    }
    const double s = 1.0 / determinant;
    const auto along = [&](const Double3& row) {
        return float(-(row.x * off.x + row.y * off.y + row.z * off.z) * s);
    };
    Matrix inverse;
    inverse.axisX = {float(rowX.x * s), float(rowY.x * s), float(rowZ.x * s)};
    inverse.axisY = {float(rowX.y * s), float(rowY.y * s), float(rowZ.y * s)};
    inverse.axisZ = {float(rowX.z * s), float(rowY.z * s), float(rowZ.z * s)};
    inverse.off = {along(rowX), along(rowY), along(rowZ)};
    return inverse;
}

AxisAngle MatrixToRotAxis(const Matrix& matrix) {
    Vector x = matrix.axisX.GetNormalized();
    const Vector y = matrix.axisY.GetNormalized();
    const Vector z = matrix.axisZ.GetNormalized();
    if (matrix.GetDeterminant() < 0.0f) {
        x = -x;
    }
    // The sum of a rotation's diagonal is 1 + 2 cos(angle), the differences across it are 2 sin(angle) times
    // the axis. Signs are those of a left-handed space.
    const Vector turn = Vector(z.y - y.z, x.z - z.x, y.x - x.y) * 0.5f;
    const float cosine = (x.x + y.y + z.z - 1.0f) * 0.5f;
    AxisAngle result;
    result.angle = std::atan2(turn.GetLength(), cosine);
    if (cosine >= 0.0f) {
        result.axis = turn == Vector() ? result.axis : turn.GetNormalized();
        return result;
    }
    // Towards half a turn the differences vanish, but the symmetric part less cos(angle) grows to a product
    // of the axis with itself: its longest column points along the axis.
    const Vector columns[] = {{x.x - cosine, (x.y + y.x) * 0.5f, (x.z + z.x) * 0.5f},
                              {(x.y + y.x) * 0.5f, y.y - cosine, (y.z + z.y) * 0.5f},
                              {(x.z + z.x) * 0.5f, (y.z + z.y) * 0.5f, z.z - cosine}};
    Vector longest = columns[0];
    for (const Vector& column : columns) {
        longest = column.GetSquaredLength() > longest.GetSquaredLength() ? column : longest;
    }
    longest = longest.GetNormalized();
    result.axis = Dot(longest, turn) < 0.0f ? -longest : longest;
    return result;
}
