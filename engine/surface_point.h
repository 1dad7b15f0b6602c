// SPDX-License-Identifier: MIT
#pragma once

#include "engine/geometry.h"

namespace engine {

/// The point with barycentric weights `u` and `v` of the second and third corner; `place` is the instance's
/// at the time of interest.
SurfacePoint pointOnTriangle(const Instance& instance, Quenza::u64 triangle, float u, float v,
                             const Affine& place);

/// `normal` points from the sphere's centre to the point, in the sphere's own space, in any length.
SurfacePoint pointOnSphere(const Instance& instance, const Vec& normal, const Affine& place);

} // namespace engine
