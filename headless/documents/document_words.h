// SPDX-License-Identifier: MIT
#pragma once

#include "headless/documents/names.h"
#include "headless/model/track.h"
#include "host/ids.h"
#include "host/object.h"

// The words of the document format, for reading and writing.

namespace headless {

inline constexpr const char* DOCUMENT_FORMAT = "quenza-headless-document";
inline constexpr int32_t DOCUMENT_VERSION = 1;

inline constexpr int32_t MAX_FPS = 10000;
inline constexpr int32_t MAX_IMAGE_SIZE = 65536;

inline constexpr std::initializer_list<NamedValue> RENDER_MODES = {
    {"on", MODE_ON}, {"off", MODE_OFF}, {"default", MODE_UNDEF}};

inline constexpr std::initializer_list<NamedValue> FRAME_SEQUENCES = {
    {"manual", RDATA_FRAMESEQUENCE_MANUAL},
    {"current", RDATA_FRAMESEQUENCE_CURRENTFRAME},
    {"all", RDATA_FRAMESEQUENCE_ALLFRAMES},
    {"preview", RDATA_FRAMESEQUENCE_PREVIEWRANGE}};

inline constexpr std::initializer_list<NamedValue> PROJECTIONS = {{"spherical", P_SPHERICAL},
                                                                  {"cylindrical", P_CYLINDRICAL},
                                                                  {"flat", P_FLAT},
                                                                  {"cubic", P_CUBIC},
                                                                  {"frontal", P_FRONTAL},
                                                                  {"spatial", P_SPATIAL},
                                                                  {"uvw", P_UVW},
                                                                  {"shrink wrapping", P_SHRINKWRAP},
                                                                  {"camera mapping", P_CAMERAMAP}};

inline constexpr std::initializer_list<NamedValue> UNITS = {{"km", 1}, {"m", 2}, {"cm", 3}, {"mm", 4}};

struct LayerFlag {
    const char* key;
    bool LayerData::*flag;
};
inline constexpr LayerFlag LAYER_FLAGS[] = {
    {"view", &LayerData::view}, {"render", &LayerData::render}, {"manager", &LayerData::manager}};

inline constexpr std::initializer_list<NamedValue> CHANNELS = {
    {"position", static_cast<int32_t>(Channel::position)},
    {"rotation", static_cast<int32_t>(Channel::rotation)},
    {"scale", static_cast<int32_t>(Channel::scale)},
    {"orientation", static_cast<int32_t>(Channel::orientation)},
    {"transform", static_cast<int32_t>(Channel::transform)},
    {"parameter", static_cast<int32_t>(Channel::parameter)}};

inline constexpr std::initializer_list<NamedValue> COMPONENTS = {{"x", 0}, {"y", 1}, {"z", 2}};

inline constexpr std::initializer_list<NamedValue> INTERPOLATIONS = {
    {"step", static_cast<int32_t>(Interpolation::step)},
    {"linear", static_cast<int32_t>(Interpolation::linear)},
    {"spline", static_cast<int32_t>(Interpolation::spline)}};

} // namespace headless
