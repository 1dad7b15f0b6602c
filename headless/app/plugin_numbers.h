// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Numbers of the plug-in that the program's commands name.

namespace headless {

inline constexpr int32_t QUENZA_MATERIAL = 1024337;

inline constexpr int32_t CONVERT_MATERIALS = 1021852;
inline constexpr int32_t IMPORT_MATERIALS = 1022469;
inline constexpr int32_t BAKE_MATERIAL = 1024338;

// The realtime preview's command, and its dialog's gadgets.
inline constexpr int32_t REALTIME_PREVIEW = 1033599;
inline constexpr int32_t REALTIME_AREA = 6037;
inline constexpr int32_t REALTIME_START = 6038;

// Commands of a render in the Picture Viewer.
inline constexpr int32_t TONEMAPPING_DIALOG = 1023599;
inline constexpr int32_t PAUSE_RENDERING = 1023695;
inline constexpr int32_t RESUME_RENDERING = 1023696;
inline constexpr int32_t UPDATE_IMAGE = 1027825;

/// Gadgets of the tone mapping dialog, and values of its method.
enum TonemappingGadget : int32_t {
    TONEMAP_METHOD = 6007,
    TONEMAP_REINHARD = 6008,
    TONEMAP_PRE_SCALE = 6009,
    TONEMAP_POST_SCALE = 6010,
    TONEMAP_BURN = 6011,
    TONEMAP_LINEAR = 6012,
    TONEMAP_SCALE = 6013,
    TONEMAP_CAMERA = 6014,
    TONEMAP_RESPONSE = 6015,
    TONEMAP_FILM_ISO = 6016,
    TONEMAP_EV_ADJUST = 6017,
    WHITE_POINT = 6019,
    WHITE_POINT_X = 6032,
    WHITE_POINT_Y = 6033,
    /// A layer's index is added to these.
    LAYER_COLOUR = 6660000,
    LAYER_ENABLED = 7660000,
    LAYER_NAME = 8660000,
};
/// Layer gadgets of different kinds are this far apart.
inline constexpr int32_t MOST_LAYERS = 999'999;

} // namespace headless
