// SPDX-License-Identifier: MIT
#pragma once

#include "headless/app/plugin_numbers.h"
#include "host/vector.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// The word for a kind of tone mapping, and what its radio button is worth.
struct TonemapMethod {
    const char* word;
    int32_t value;
};
inline constexpr TonemapMethod TONEMAP_METHODS[] = {
    {"reinhard", TONEMAP_REINHARD}, {"linear", TONEMAP_LINEAR}, {"camera", TONEMAP_CAMERA}};

/// What a user does to a render that runs in the Picture Viewer.
struct PictureAction {
    enum class Kind { pause, resume, update, stop, tonemap, whitePoint, layer };

    /// A number for a gadget of the tone mapping dialog, by the word that stood for it.
    struct Number {
        std::string word;
        int32_t gadget = 0;
        float value = 0.0f;
    };

    Kind kind = Kind::update;
    /// As it was written.
    std::string text;

    /// Of a tone mapping: what its radio button is worth.
    int32_t method = 0;
    /// Of a tone mapping or white point.
    std::vector<Number> numbers;
    /// Of a tone mapping its response function, of a white point its name; "" for none.
    std::string name;

    /// Of a layer: its index, and what changes.
    int32_t layer = 0;
    std::optional<bool> isOn;
    std::optional<float> gain;
    std::optional<Vector> colour;
};

/// Reads an action in words:
///   pause, resume, update, stop
///   tonemap reinhard [burn=N] [prescale=N] [postscale=N], tonemap linear [scale=N],
///   tonemap camera [iso=N] [ev=N] [response=NAME]
///   whitepoint NAME, whitepoint X,Y
///   layer INDEX gain=N, layer INDEX on, layer INDEX off, layer INDEX color=R,G,B
/// Throws UsageError, with what is close to a wrong word.
PictureAction parsePictureAction(std::string_view text);

} // namespace headless
