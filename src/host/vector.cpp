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
