// SPDX-License-Identifier: MIT
#include "materials/channels.h"

#include "host/bitmap.h"

#include <algorithm>

namespace {

using enum ChannelFamily;

/// A named channel: the texture's numbers follow that of its shader.
constexpr Channel named(ChannelId id, const char* name, ChannelFamily family, int32_t enable, int32_t group,
                        int32_t shader, int32_t smooth, float presetTextureGamma, float presetB,
                        const char* bakeSuffix) {
    Channel made{};
    made.id = id;
    made.name = name;
    made.family = family;
    made.constant = ConstantForm::NONE;
    made.enable = enable;
    made.group = group;
    made.shader = shader;
    made.textureGamma = shader + 1;
    made.a = shader + 2;
    made.b = shader + 3;
    made.c = shader + 4;
    made.smooth = smooth;
    made.presetTextureGamma = presetTextureGamma;
    made.presetB = presetB;
    made.bakeSuffix = bakeSuffix;
    return made;
}

constexpr Channel withColour(Channel made, int32_t colour, int32_t brightness, int32_t gamma) {
    made.constant = ConstantForm::COLOUR;
    made.colour = colour;
    made.brightness = brightness;
    made.gamma = gamma;
    return made;
}

constexpr Channel withValue(Channel made, int32_t value, float preset) {
    made.constant = ConstantForm::VALUE;
    made.value = value;
    made.presetValue = preset;
    return made;
}

constexpr Channel spectrum(ChannelId id, const char* name, int32_t enable, int32_t group, int32_t base,
                           float presetUniform) {
    Channel made = named(id, name, WAVELENGTH_DEPENDENT, enable, group, base + MAT_OFFSET_SHADER, 0, 2.2f,
                         1.0f, "_albedo.jpg");
    made.constant = ConstantForm::SPECTRUM;
    made.base = base;
    made.presetValue = presetUniform;
    return made;
}

constexpr Channel scalar(ChannelId id, const char* name, int32_t enable, int32_t group, int32_t base,
                         float preset) {
    Channel made = named(id, name, WAVELENGTH_INDEPENDENT, enable, group, base + MAT_OFFSET_SHADER,
                         base + MAT_OFFSET_SMOOTH, 1.0f, 1.0f, "_sigma.jpg");
    made.base = base;
    return withValue(made, base + MAT_OFFSET_VALUE, preset);
}

/// A scene unit of height is 1000 of a texture.
constexpr float HEIGHT_B = 0.001f;

constexpr Channel CHANNELS[] = {
    withColour(named(ChannelId::ALBEDO, "Albedo", WAVELENGTH_DEPENDENT, MAT_ALBEDO_ENABLED, MAT_GROUP_ALBEDO,
                     MAT_ALBEDO_SHADER, 0, 2.2f, 1.0f, "_albedo.jpg"),
               MAT_ALBEDO_COLOUR, MAT_ALBEDO_BRIGHTNESS, MAT_ALBEDO_GAMMA),
    withValue(named(ChannelId::EXPONENT, "Exponent", WAVELENGTH_INDEPENDENT, MAT_EXPONENT_ENABLED,
                    MAT_GROUP_EXPONENT, MAT_EXPONENT_SHADER, MAT_EXPONENT_SMOOTH, 1.0f, 1.0f,
                    "_exponent.jpg"),
              MAT_EXPONENT, 1000.0f),
    withValue(named(ChannelId::SIGMA, "Sigma", WAVELENGTH_INDEPENDENT, MAT_SIGMA_ENABLED, MAT_GROUP_SIGMA,
                    MAT_SIGMA_SHADER, MAT_SIGMA_SMOOTH, 1.0f, 1.0f, "_sigma.jpg"),
              MAT_SIGMA, 0.2f),
    withValue(named(ChannelId::BLEND, "Blend", DISPLACEMENT, MAT_BLEND_ENABLED, MAT_GROUP_BLEND,
                    MAT_BLEND_SHADER, MAT_BLEND_SMOOTH, 1.0f, 1.0f, "_alpha.jpg"),
              MAT_BLEND_VALUE, 0.5f),
    named(ChannelId::EMISSION, "Emission", WAVELENGTH_DEPENDENT, MAT_EMISSION_ENABLED, MAT_GROUP_EMISSION,
          MAT_EMISSION_SHADER, 0, 2.2f, 1.0f, "_emission.jpg"),
    named(ChannelId::BUMP, "Bump", DISPLACEMENT, MAT_BUMP_ENABLED, MAT_GROUP_BUMP, MAT_BUMP_SHADER,
          MAT_BUMP_SMOOTH, 1.0f, HEIGHT_B, "_bump.jpg"),
    named(ChannelId::DISPLACEMENT, "Displacement", DISPLACEMENT, MAT_DISPLACEMENT_ENABLED,
          MAT_GROUP_DISPLACEMENT, MAT_DISPLACEMENT_SHADER, MAT_DISPLACEMENT_SMOOTH, 1.0f, HEIGHT_B,
          "_displacement.jpg"),
    withColour(named(ChannelId::ABSORPTION_LAYER, "Absorption layer", WAVELENGTH_DEPENDENT,
                     MAT_ABSORPTION_LAYER_ENABLED, MAT_GROUP_ABSORPTION_LAYER, MAT_ABSORPTION_LAYER_SHADER, 0,
                     2.2f, 1.0f, "_absorption_layer.jpg"),
               MAT_ABSORPTION_LAYER_COLOUR, MAT_ABSORPTION_LAYER_BRIGHTNESS, MAT_ABSORPTION_LAYER_GAMMA),
    named(ChannelId::NORMAL_MAP, "Normal map", VEC3, MAT_NORMAL_MAP_ENABLED, MAT_GROUP_NORMAL_MAP,
          MAT_NORMAL_MAP_SHADER, 0, 1.0f, 1.0f, "_normal.jpg"),
    spectrum(ChannelId::COATING_ABSORPTION, "Coating absorption", MAT_CHANNEL_10000_ENABLED, MAT_GROUP_10000,
             MAT_COATING_ABSORPTION, 0.0f),
    scalar(ChannelId::COATING_THICKNESS, "Coating thickness", MAT_CHANNEL_11000_ENABLED, MAT_GROUP_11000,
           MAT_COATING_THICKNESS, 1000.0f),
    scalar(ChannelId::ROUGHNESS, "Roughness", MAT_CHANNEL_12000_ENABLED, MAT_GROUP_12000, MAT_ROUGHNESS,
           0.3f),
    scalar(ChannelId::FRESNEL_SCALE, "Fresnel scale", MAT_CHANNEL_13000_ENABLED, MAT_GROUP_13000,
           MAT_FRESNEL_SCALE, 1.0f),
    scalar(ChannelId::BACK_FRESNEL_SCALE, "Back fresnel scale", MAT_CHANNEL_14000_ENABLED, MAT_GROUP_14000,
           MAT_BACK_FRESNEL_SCALE, 1.0f),
    scalar(ChannelId::BACK_ROUGHNESS, "Back roughness", MAT_CHANNEL_15000_ENABLED, MAT_GROUP_15000,
           MAT_BACK_ROUGHNESS, 0.3f),
    spectrum(ChannelId::TRANSMITTANCE, "Transmittance", MAT_CHANNEL_16000_ENABLED, MAT_GROUP_16000,
             MAT_TRANSMITTANCE, 0.5f),
    scalar(ChannelId::R_F, "r_f", MAT_CHANNEL_17000_ENABLED, MAT_GROUP_17000, MAT_R_F, 0.5f),
};

constexpr bool isInOrder() {
    for (size_t i = 0; i < std::size(CHANNELS); ++i) {
        if (static_cast<size_t>(CHANNELS[i].id) != i) {
            return false;
        }
    }
    return true;
}
static_assert(isInOrder());

} // namespace

const char* Channel::programHeader() const {
    if (family == ChannelFamily::DISPLACEMENT) {
        return "def eval() real: ";
    }
    return valueType() == QSL_VEC3 ? "def eval(vec3 pos) vec3: " : "def eval(vec3 pos) real: ";
}

QSLValueType Channel::valueType() const {
    return family == ChannelFamily::WAVELENGTH_DEPENDENT || family == ChannelFamily::VEC3 ? QSL_VEC3
                                                                                          : QSL_REAL;
}

int32_t Channel::saveFlags() const {
    return valueType() == QSL_VEC3 ? SAVEBIT_0 : SAVEBIT_GREYSCALE;
}

std::span<const Channel> channels() {
    return CHANNELS;
}

const Channel& channel(ChannelId id) {
    return CHANNELS[static_cast<size_t>(id)];
}

const Channel* findChannelOfShader(int32_t link) {
    const Channel* const found = std::find_if(std::begin(CHANNELS), std::end(CHANNELS),
                                              [link](const Channel& entry) { return entry.shader == link; });
    return link != 0 && found != std::end(CHANNELS) ? found : nullptr;
}
