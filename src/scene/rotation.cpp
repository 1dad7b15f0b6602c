// SPDX-License-Identifier: MIT
#include "scene/rotation.h"

#include "foundation/trigonometry.h"
#include "scene/ostream.h"
#include "scene/xml_elements.h"

#include <cmath>

namespace Quenza {

void MatrixRotation::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "matrix");
    writeMatrixLine(stream, depth + 1, matrix);
    writeCloseTag(stream, depth, "matrix");
}

void AxisRotation::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "axis_rotation");
    writeVec3Element(stream, depth + 1, "axis", axis);
    writeDoubleElement(stream, depth + 1, "angle", angle);
    writeCloseTag(stream, depth, "axis_rotation");
}

Matrix3d AxisRotation::getMatrix() const {
    return axisAngleMatrix(axis, angle);
}

Matrix3d axisAngleMatrix(const Vec3d& axis, double angle) {
    const double length = std::sqrt(axis.x * axis.x + axis.y * axis.y + axis.z * axis.z);
    if (!(length > 0))
        return Matrix3d::identity();
    const double x = axis.x / length;
    const double y = axis.y / length;
    const double z = axis.z / length;
    const double s = sine(angle);
    const double c = cosine(angle);
    const double t = 1 - c;
    return Matrix3d{{t * x * x + c, t * x * y - s * z, t * x * z + s * y, //
                     t * x * y + s * z, t * y * y + c, t * y * z - s * x, //
                     t * x * z - s * y, t * y * z + s * x, t * z * z + c}};
}

} // namespace Quenza
