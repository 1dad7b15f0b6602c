// SPDX-License-Identifier: MIT
#include "scene/keyframe.h"

#include "scene/ostream.h"
#include "scene/xml_elements.h"

namespace Quenza {

void KeyFrame::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "keyframe");
    writeDoubleElement(stream, depth + 1, "time", time);
    writeVec3Element(stream, depth + 1, "pos", pos);
    writeOpenTag(stream, depth + 1, "rotation_quaternion");
    writeVec3Element(stream, depth + 2, "axis", rotation_axis);
    writeDoubleElement(stream, depth + 2, "angle", rotation_angle);
    writeCloseTag(stream, depth + 1, "rotation_quaternion");
    writeCloseTag(stream, depth, "keyframe");
}

} // namespace Quenza
