// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

namespace Quenza {

/// Plain records of floats or doubles; nothing is initialised unless braces say so.
struct Vec2f {
    f32 x, y;
    friend bool operator==(const Vec2f&, const Vec2f&) = default;
};

struct Vec3f {
    f32 x, y, z;
    friend bool operator==(const Vec3f&, const Vec3f&) = default;
};

struct Vec2d {
    double x, y;
    friend bool operator==(const Vec2d&, const Vec2d&) = default;
};

struct Vec3d {
    double x, y, z;
    friend bool operator==(const Vec3d&, const Vec3d&) = default;
};

/// Four doubles, row by row.
struct Matrix2d {
    double e[4];
    friend bool operator==(const Matrix2d&, const Matrix2d&) = default;
};

/// Nine doubles, row by row; it multiplies column vectors.
struct Matrix3d {
    double e[9];
    friend bool operator==(const Matrix3d&, const Matrix3d&) = default;

    static constexpr Matrix3d identity() { return Matrix3d{{1, 0, 0, 0, 1, 0, 0, 0, 1}}; }
};

} // namespace Quenza
