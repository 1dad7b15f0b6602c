// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>

#include "headless/geometry/vec3.h"

namespace headless::geometry {

/// The six directions, numbered as the host stores a primitive's orientation.
enum class Axis : int { PlusX = 0, MinusX = 1, PlusY = 2, MinusY = 3, PlusZ = 4, MinusZ = 5 };

/// How a picture hangs on a face that looks along `normal`, for a viewer in front of it: walls have it
/// upright, the floor and the ceiling have X to its right. cross(up, right) is `normal`: the space is
/// left-handed.
struct AxisFrame {
    Vec3 right;
    Vec3 up;
    Vec3 normal;
};

inline constexpr std::array<AxisFrame, 6> axisFrames{{
    {{0, 0, 1}, {0, 1, 0}, {1, 0, 0}},
    {{0, 0, -1}, {0, 1, 0}, {-1, 0, 0}},
    {{1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
    {{1, 0, 0}, {0, 0, -1}, {0, -1, 0}},
    {{-1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
    {{1, 0, 0}, {0, 1, 0}, {0, 0, -1}},
}};

constexpr const AxisFrame& frameOf(Axis axis) {
    return axisFrames[static_cast<std::size_t>(axis)];
}

} // namespace headless::geometry
