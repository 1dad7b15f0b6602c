// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

namespace headless {

/// Heading, pitch and bank in radians, applied in the order bank (about Z), pitch (about X), heading (about
/// Y). In the left-handed space with Y up, positive values turn +Z towards -X (heading), raise +Z (pitch),
/// and lower +X (bank).
Matrix rotationFromHPB(const Vector& hpb);
/// The angles of a rotation: axes of any length, not mirrored. Bank is zero when the pitch is a right angle.
Vector hpbFromRotation(const Matrix& rotation);

/// The shortest rotation between two, at 0 to 1. Lengths of axes don't count, and offsets are zero.
Matrix interpolateRotation(const Matrix& from, const Matrix& to, double t);
/// From a quaternion w + xi + yj + zk, of any length but zero, of this space: it turns p to q p q^-1.
Matrix rotationFromQuaternion(double w, double x, double y, double z);

/// A local matrix in parts. `rotation` has unit axes that aren't mirrored; a mirroring matrix has a negative
/// x scale. An axis of length zero gets a direction that completes the others. Shear is lost.
struct MatrixParts {
    Vector position;
    Matrix rotation;
    Vector scale;
};
MatrixParts splitMatrix(const Matrix& matrix);
Matrix joinMatrix(const MatrixParts& parts);

} // namespace headless
