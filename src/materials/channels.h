// SPDX-License-Identifier: MIT
#pragma once

#include "shared/parameter_ids.h"

#include <cstdint>
#include <span>

/// The channels of the plug-in's material, in the order of its page.
enum class ChannelId : uint8_t {
    ALBEDO,
    EXPONENT,
    SIGMA,
    BLEND,
    EMISSION,
    BUMP,
    DISPLACEMENT,
    ABSORPTION_LAYER,
    NORMAL_MAP,
    COATING_ABSORPTION,
    COATING_THICKNESS,
    ROUGHNESS,
    FRESNEL_SCALE,
    BACK_FRESNEL_SCALE,
    BACK_ROUGHNESS,
    TRANSMITTANCE,
    R_F,
};

/// Which parameter class of the scene a channel becomes.
enum class ChannelFamily : uint8_t {
    WAVELENGTH_DEPENDENT,
    WAVELENGTH_INDEPENDENT,
    DISPLACEMENT,
    VEC3,
};

/// What stands in when a channel has no shader.
enum class ConstantForm : uint8_t {
    NONE,
    /// Colour, brightness and gamma.
    COLOUR,
    /// One number.
    VALUE,
    /// A spectrum by its type.
    SPECTRUM,
};

/// Value types of the renderer's shader language.
enum QSLValueType : int32_t { QSL_REAL = 0, QSL_VEC3 = 1 };

/// All that is to be known about a channel. Numbers are those of the material's container; 0 where a channel
/// has no such parameter.
struct Channel {
    ChannelId id;
    /// As the artist knows it: "Albedo".
    const char* name;
    ChannelFamily family;
    ConstantForm constant;

    int32_t enable;
    int32_t group;
    /// First of a numbered channel's numbers, 0 for a named one.
    int32_t base;

    // A texture's value t becomes a * t * t + b * t + c.
    int32_t shader;
    int32_t textureGamma;
    int32_t a;
    int32_t b;
    int32_t c;
    int32_t smooth;

    // Constant form COLOUR; SPECTRUM has them at its offsets.
    int32_t colour;
    int32_t brightness;
    int32_t gamma;
    // Constant form VALUE.
    int32_t value;

    // Defaults of a new material.
    float presetTextureGamma;
    float presetB;
    /// Of the constant: the number, or the uniform spectrum's.
    float presetValue;

    /// End of the name of a baked file.
    const char* bakeSuffix;

    /// First line of a shader program.
    const char* programHeader() const;
    QSLValueType valueType() const;
    /// ImageSaveBits of a baked file.
    int32_t saveFlags() const;
};

/// All channels, in the order of ChannelId.
std::span<const Channel> channels();
const Channel& channel(ChannelId id);
/// The channel whose shader link has the number `link`, null for none.
const Channel* findChannelOfShader(int32_t link);
