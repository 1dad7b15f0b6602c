// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/vec.h"
#include "host/vector.h"

#include <cmath>

// The host is left-handed with Y up, the scene right-handed with Z up: Y and Z change places.

/// A vector of the host in the scene's axes.
constexpr Quenza::Vec3f toSceneSpace(const Vector& v) {
    return {v.x, v.z, v.y};
}

/// The same in doubles, as nodes store it.
constexpr Quenza::Vec3d toSceneSpaceDouble(const Vector& v) {
    const Quenza::Vec3f swapped = toSceneSpace(v);
    return {double(swapped.x), double(swapped.y), double(swapped.z)};
}

/// The linear part of a host matrix in the scene's axes: Y and Z change places among the axes, and within
/// each. Scale, shear and mirroring stay in it.
constexpr Quenza::Matrix3d toSceneSpace(const Matrix& m) {
    const Quenza::Vec3d x = toSceneSpaceDouble(m.axisX);
    const Quenza::Vec3d y = toSceneSpaceDouble(m.axisZ);
    const Quenza::Vec3d z = toSceneSpaceDouble(m.axisY);
    return {{x.x, y.x, z.x, x.y, y.y, z.y, x.z, y.z, z.z}};
}

/// False when a component is infinite or not a number.
inline bool isFinite(const Vector& v) {
    return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}
inline bool isFinite(const Matrix& m) {
    return isFinite(m.off) && isFinite(m.axisX) && isFinite(m.axisY) && isFinite(m.axisZ);
}
