// SPDX-License-Identifier: MIT
#pragma once

#include "host/ids.h"

// Numbers of the built-in types' parameters, beside those that the plug-in itself names in host/ids.h.
// Lengths are document units, angles radians. Documents store the numbers; their names and defaults stand in
// builtin_types.cpp.

namespace headless {

enum PrimitiveParameter : int32_t {
    PRIM_CUBE_SUBX = 1101,
    PRIM_CUBE_SUBY = 1102,
    PRIM_CUBE_SUBZ = 1103,

    PRIM_DISC_INNER_RAD = 1160,

    PRIM_CYLINDER_SUBH = 5006,
    PRIM_CYLINDER_CAPS = 5009,
    PRIM_CYLINDER_SUBCAP = 5010,

    PRIM_CONE_TOP_RAD = 1170,
    PRIM_CONE_BOTTOM_RAD = 1171,
    PRIM_CONE_HEIGHT = 1172,
    PRIM_CONE_SUBH = 1173,
    PRIM_CONE_SEG = 1174,
    PRIM_CONE_CAPS = 1175,
    PRIM_CONE_SUBCAP = 1176,

    PRIM_TORUS_RING_RAD = 1180,
    PRIM_TORUS_RING_SEG = 1181,
    PRIM_TORUS_PIPE_RAD = 1182,
    PRIM_TORUS_PIPE_SEG = 1183,

    PRIM_TUBE_INNER_RAD = 1190,
    PRIM_TUBE_OUTER_RAD = 1191,
    PRIM_TUBE_HEIGHT = 1192,
    PRIM_TUBE_SUBH = 1193,
    PRIM_TUBE_SEG = 1194,
    PRIM_TUBE_SUBCAP = 1195,
};

enum GeneratorParameter : int32_t {
    ARRAY_RADIUS = 2000,
    ARRAY_COPIES = 2001,

    /// The mirror: 0 the YZ plane, 1 XZ, 2 XY.
    SYMMETRY_PLANE = 2010,
    SYMMETRY_WELD = 2011,
    SYMMETRY_TOLERANCE = 2012,
};

enum DeformerParameter : int32_t {
    DEFORM_SIZE = 2020,
    /// Bend and twist: an angle. Taper and bulge: a fraction.
    DEFORM_STRENGTH = 2021,
    /// 0 limited, 1 within the box, 2 unlimited.
    DEFORM_MODE = 2022,
    DEFORM_BEND_DIRECTION = 2023,
    DEFORM_BEND_KEEP_LENGTH = 2024,
    DEFORM_TAPER_CURVATURE = 2025,
};

enum CameraLensParameter : int32_t {
    /// Focal length in millimetres.
    CAMERA_FOCUS = 500,
};

enum LightParameter : int32_t {
    /// Parallel light along the object's Z axis, without a place of its own.
    LIGHT_TYPE_DISTANT = 3,
    /// Cones of a spot light: full angles, of the bright middle and of the whole.
    LIGHT_DETAILS_INNERANGLE = 90010,
    LIGHT_DETAILS_OUTERANGLE = 90011,
};

enum TextureTagParameter : int32_t {
    /// The camera that camera mapping looks through; without one it's the view's.
    TEXTURETAG_CAMERA = 1010,
};

} // namespace headless
