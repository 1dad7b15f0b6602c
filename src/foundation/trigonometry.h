// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

namespace Quenza {

/// Sine and cosine of an angle in radians, the same double on every system: checksums of vertices name mesh
/// files.
#ifdef __MINGW32__
double sine(double angle);
double cosine(double angle);
#else
inline double sine(double angle) {
    return std::sin(angle);
}
inline double cosine(double angle) {
    return std::cos(angle);
}
#endif

} // namespace Quenza
