// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"
#include "foundation/vec.h"

namespace Quenza {

class OStream;

/// A plain record of where an object is at one time of the frame.
struct KeyFrame {
    Vec3d pos;   ///< Metres, scene space.
    double time; ///< 0 to 1 over the frame interval.
    Vec3d rotation_axis;
    double rotation_angle; ///< Radians.

    void writeToXML(OStream& stream, u32 depth) const;
};

} // namespace Quenza
