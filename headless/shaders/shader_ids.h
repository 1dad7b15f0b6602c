// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

// Numbers of the host's own shaders, of which a plug-in knows only the bitmap (host/ids.h). Documents store
// them.

namespace headless {

enum ShaderType : int32_t {
    Xnoise = 5834,
    Xgradient = 5835,
    Xcheckerboard = 5836,
    Xfusion = 5837,
    Xlayer = 5838,
    Xcolorizer = 5839,
};

enum NoiseParameter : int32_t {
    NOISE_COLOR1 = 1000,
    NOISE_COLOR2 = 1001,
    NOISE_SEED = 1002,
    NOISE_OCTAVES = 1003,
    /// At 1 there are ten lumps along a texture.
    NOISE_SCALE = 1004,
};

enum GradientParameter : int32_t {
    GRADIENT_COLOR1 = 1000,
    GRADIENT_COLOR2 = 1001,
    GRADIENT_TYPE = 1002,
    GRADIENT_TYPE_U = 0,
    GRADIENT_TYPE_V = 1,
    /// From the middle of the texture to its edges.
    GRADIENT_TYPE_CIRCULAR = 2,
    /// Starts anew beyond its end.
    GRADIENT_CYCLE = 1003,
};

enum CheckerboardParameter : int32_t {
    CHECKERBOARD_COLOR1 = 1000,
    CHECKERBOARD_COLOR2 = 1001,
    /// Fields along a texture.
    CHECKERBOARD_FREQUENCY_U = 1002,
    CHECKERBOARD_FREQUENCY_V = 1003,
};

/// How a colour goes over another.
enum BlendMode : int32_t {
    BLEND_NORMAL = 0,
    BLEND_AVERAGE = 1,
    BLEND_ADD = 2,
    BLEND_SUBTRACT = 3,
    BLEND_MULTIPLY = 4,
    BLEND_SCREEN = 5,
    BLEND_LIGHTEN = 6,
    BLEND_DARKEN = 7,
    BLEND_DIFFERENCE = 8,
    BLEND_OVERLAY = 9,
};

enum FusionParameter : int32_t {
    FUSION_MODE = 1000,
    FUSION_BLEND = 1001,
    FUSION_BLEND_CHANNEL = 1002,
    FUSION_MASK_CHANNEL = 1003,
    FUSION_BASE_CHANNEL = 1004,
};

/// A layer shader has eight layers, the first at the bottom: numbers of the first, each other's LAYER_STEP
/// on.
enum LayerParameter : int32_t {
    LAYER_1_SHADER = 1000,
    LAYER_1_MODE = 1001,
    LAYER_1_STRENGTH = 1002,
    LAYER_STEP = 10,
    LAYER_COUNT = 8,
};

enum ColorizerParameter : int32_t {
    COLORIZER_SHADER = 1000,
    COLORIZER_INPUT = 1001,
    COLORIZER_INPUT_BRIGHTNESS = 0,
    COLORIZER_INPUT_RED = 1,
    COLORIZER_INPUT_GREEN = 2,
    COLORIZER_INPUT_BLUE = 3,
    COLORIZER_COLOR1 = 1002,
    COLORIZER_COLOR2 = 1003,
};

/// Switches of the standard material's channels, each at MATERIAL_USE_COLOR plus its MaterialChannelId.
enum MaterialSwitch : int32_t {
    MATERIAL_USE_COLOR = 900,
    MATERIAL_USE_LUMINANCE = 901,
    MATERIAL_USE_TRANSPARENCY = 902,
    MATERIAL_USE_REFLECTION = 903,
    MATERIAL_USE_ENVIRONMENT = 904,
    MATERIAL_USE_FOG = 905,
    MATERIAL_USE_BUMP = 906,
    MATERIAL_USE_ALPHA = 907,
    MATERIAL_USE_SPECULAR = 908,
    MATERIAL_USE_SPECULARCOLOR = 909,
    MATERIAL_USE_GLOW = 910,
    MATERIAL_USE_DISPLACEMENT = 911,
    MATERIAL_USE_DIFFUSION = 912,
    MATERIAL_USE_NORMAL = 913,
};

} // namespace headless
