// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "foundation/vec.h"

namespace Quenza {

class OStream;

/// How an object is turned (and, as a matrix, scaled and sheared) before its keyframes move it.
class Rotation : public RefCounted {
public:
    virtual void writeToXML(OStream& stream, u32 depth) const = 0;
    /// The TYPE of the class below.
    virtual u32 getType() const = 0;
    virtual Matrix3d getMatrix() const = 0;
};

class MatrixRotation : public Rotation {
public:
    static constexpr u32 TYPE = 0;

    MatrixRotation() = default;
    explicit MatrixRotation(const Matrix3d& m) : matrix(m) {}

    void writeToXML(OStream& stream, u32 depth) const override;
    u32 getType() const override { return TYPE; }
    Matrix3d getMatrix() const override { return matrix; }

    Matrix3d matrix = Matrix3d::identity();
};

class AxisRotation : public Rotation {
public:
    static constexpr u32 TYPE = 1;

    AxisRotation() = default;
    AxisRotation(const Vec3d& a, double radians) : axis(a), angle(radians) {}

    void writeToXML(OStream& stream, u32 depth) const override;
    u32 getType() const override { return TYPE; }
    Matrix3d getMatrix() const override;

    Vec3d axis{0, 0, 1};
    double angle = 0; ///< Radians, counter-clockwise when the axis points at the viewer.
};

/// The matrix of a turn about an axis of any length (Rodrigues' formula); the identity for a zero axis.
Matrix3d axisAngleMatrix(const Vec3d& axis, double angle);

} // namespace Quenza
