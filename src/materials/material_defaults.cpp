// SPDX-License-Identifier: MIT
#include "materials/material_defaults.h"

#include "host/basecontainer.h"
#include "materials/channels.h"
#include "materials/spectrum_numbers.h"
#include "shared/parameter_ids.h"

namespace {

enum class Kind : uint8_t { BOOL, LONG, REAL, VECTOR, STRING };

struct Preset {
    int32_t id;
    Kind kind;
    int32_t number;
    Vector vector;
    const char* text;
};

constexpr Preset off(int32_t id) {
    return {id, Kind::BOOL, 0, {}, ""};
}
constexpr Preset on(int32_t id) {
    return {id, Kind::BOOL, 1, {}, ""};
}
constexpr Preset whole(int32_t id, int32_t value) {
    return {id, Kind::LONG, value, {}, ""};
}
constexpr Preset real(int32_t id, float value) {
    return {id, Kind::REAL, 0, {value, 0.0f, 0.0f}, ""};
}
constexpr Preset grey(int32_t id, float value) {
    return {id, Kind::VECTOR, 0, {value, value, value}, ""};
}
constexpr Preset text(int32_t id, const char* value) {
    return {id, Kind::STRING, 0, {}, value};
}
/// The constant of a channel with one number.
Preset constant(ChannelId id) {
    return real(channel(id).value, channel(id).presetValue);
}

/// All that is no texture's and no numbered channel's.
const Preset PRESETS[] = {
    whole(MAT_PREVIEW_QUALITY, MAT_PREVIEW_MEDIUM),
    off(MAT_SHADOW_CATCHER),
    off(MAT_SKIP_OVERRIDE),
    grey(MAT_ALBEDO_COLOUR, 1.0f),
    real(MAT_ALBEDO_BRIGHTNESS, 0.8f),
    real(MAT_ALBEDO_GAMMA, 2.2f),
    grey(MAT_ABSORPTION_LAYER_COLOUR, 1.0f),
    real(MAT_ABSORPTION_LAYER_BRIGHTNESS, 0.8f),
    real(MAT_ABSORPTION_LAYER_GAMMA, 2.2f),
    real(MAT_PHONG_IOR, 1.6f),
    off(MAT_PHONG_SPECULAR),
    off(MAT_PHONG_USE_NK),
    whole(MAT_PHONG_NK_INDEX, 1),
    constant(ChannelId::EXPONENT),
    constant(ChannelId::SIGMA),

    whole(MAT_MEDIUM_KIND, MAT_MEDIUM_BASIC),
    whole(MAT_MEDIUM_PRECEDENCE, 10),
    real(MAT_MEDIUM_IOR, 1.6f),
    real(MAT_MEDIUM_CAUCHY_B, 0.0f),
    off(MAT_MEDIUM_SUBSURFACE),
    real(MAT_ATMOSPHERE_TURBIDITY, 2.0f),
    grey(MAT_ATMOSPHERE_CENTRE, 0.0f),
    real(MAT_DERMIS_HEMOGLOBIN, 0.05f),
    real(MAT_EPIDERMIS_MELANIN, 0.25f),
    real(MAT_EPIDERMIS_MELANIN_TYPE, 0.5f),

    whole(MAT_ABSORPTION_TYPE, MAT_SPECTRUM_RGB),
    grey(MAT_ABSORPTION_COLOUR, 1.0f),
    real(MAT_ABSORPTION_GAMMA, 1.0f),
    real(MAT_ABSORPTION_SCALE, 1.0f),
    real(MAT_ABSORPTION_TEMPERATURE, 6500.0f),
    real(MAT_ABSORPTION_GAIN, 1.0f),
    real(MAT_ABSORPTION_PEAK_MIN, 100.0f),
    real(MAT_ABSORPTION_PEAK_WIDTH, 600.0f),
    real(MAT_ABSORPTION_PEAK_VALUE, 1.0f),
    real(MAT_ABSORPTION_BASE_VALUE, 1.0f),
    real(MAT_ABSORPTION_UNIFORM, 0.0f),
    whole(MAT_ABSORPTION_TAB_START, 400),
    whole(MAT_ABSORPTION_TAB_END, 700),
    text(MAT_ABSORPTION_TAB_VALUES, "0.1 0.1"),

    whole(MAT_SCATTERING_TYPE, MAT_SPECTRUM_UNIFORM),
    grey(MAT_SCATTERING_COLOUR, 0.0f),
    real(MAT_SCATTERING_GAMMA, 1.0f),
    real(MAT_SCATTERING_SCALE, 1.0f),
    real(MAT_SCATTERING_TEMPERATURE, 6500.0f),
    real(MAT_SCATTERING_GAIN, 1.0f),
    real(MAT_SCATTERING_PEAK_MIN, 100.0f),
    real(MAT_SCATTERING_PEAK_WIDTH, 600.0f),
    real(MAT_SCATTERING_PEAK_VALUE, 1.0f),
    real(MAT_SCATTERING_BASE_VALUE, 1.0f),
    real(MAT_SCATTERING_UNIFORM, 0.0f),
    whole(MAT_SCATTERING_TAB_START, 400),
    whole(MAT_SCATTERING_TAB_END, 700),
    text(MAT_SCATTERING_TAB_VALUES, "0.1 0.1"),

    whole(MAT_PHASE_KIND, MAT_PHASE_UNIFORM),
    grey(MAT_PHASE_G_COLOUR, 0.9f),
    real(MAT_PHASE_G_GAMMA, 2.2f),
    on(MAT_SPECULAR_TRANSPARENT),
    text(MAT_SPECULAR_PRIVATE_DATA, ""),
    constant(ChannelId::BLEND),
    off(MAT_BLEND_STEP),

    // The emission's table has no range before the artist sets one.
    whole(MAT_EMISSION_LAYER, 0),
    whole(MAT_EMISSION_TYPE, MAT_SPECTRUM_RGB),
    grey(MAT_EMISSION_COLOUR, 1.0f),
    real(MAT_EMISSION_BRIGHTNESS, 0.8f),
    real(MAT_EMISSION_GAMMA, 1.0f),
    real(MAT_EMISSION_TEMPERATURE, 6500.0f),
    real(MAT_EMISSION_GAIN, 1.0f),
    real(MAT_EMISSION_PEAK_MIN, 100.0f),
    real(MAT_EMISSION_PEAK_WIDTH, 600.0f),
    real(MAT_EMISSION_PEAK_VALUE, 1.0f),
    real(MAT_EMISSION_BASE_VALUE, 1.0f),
    real(MAT_EMISSION_UNIFORM, 1.0f),
    text(MAT_EMISSION_TAB_VALUES, ""),
    off(MAT_USE_EMISSION_SCALE),
    whole(MAT_EMISSION_SCALE_MEASURE, MAT_MEASURE_LUMINOUS_FLUX),
    real(MAT_EMISSION_SCALE_VALUE, 100.0f),

    whole(MAT_BAKE_WIDTH, 1024),
    whole(MAT_BAKE_HEIGHT, 1024),
    real(MAT_COATING_IOR, 1.5f),
    off(MAT_COATING_INTERFERENCE),
    real(MAT_THIN_IOR, 1.5f),
};

void write(BaseContainer& data, const Preset& preset) {
    switch (preset.kind) {
    case Kind::BOOL:
        data.SetBool(preset.id, preset.number != 0);
        break;
    case Kind::LONG:
        data.SetLong(preset.id, preset.number);
        break;
    case Kind::REAL:
        data.SetReal(preset.id, preset.vector.x);
        break;
    case Kind::VECTOR:
        data.SetVector(preset.id, preset.vector);
        break;
    case Kind::STRING:
        data.SetString(preset.id, preset.text);
        break;
    }
}

void writeTexture(BaseContainer& data, const Channel& entry) {
    data.SetReal(entry.textureGamma, entry.presetTextureGamma);
    data.SetReal(entry.a, 0.0f);
    data.SetReal(entry.b, entry.presetB);
    data.SetReal(entry.c, 0.0f);
}

void writeSpectrum(BaseContainer& data, const Channel& entry) {
    const SpectrumNumbers numbers = channelSpectrum(entry.base);
    data.SetLong(numbers.type, MAT_SPECTRUM_UNIFORM);
    data.SetVector(numbers.colour, Vector(0.8f, 0.8f, 0.8f));
    data.SetReal(numbers.scale, 0.8f);
    data.SetReal(numbers.gamma, 2.2f);
    data.SetReal(numbers.temperature, 6500.0f);
    data.SetReal(numbers.gain, 1.0f);
    data.SetReal(numbers.peakMin, 450.0f);
    data.SetReal(numbers.peakWidth, 200.0f);
    data.SetReal(numbers.peakValue, 1.0f);
    data.SetReal(numbers.baseValue, 0.0f);
    data.SetReal(numbers.uniform, entry.presetValue);
}

} // namespace

void initMaterial(BaseContainer& data) {
    data.SetLong(MAT_KIND, MAT_KIND_DIFFUSE);
    for (const Channel& entry : channels()) {
        if (entry.base == 0) {
            writeTexture(data, entry);
            if (entry.smooth != 0) {
                data.SetBool(entry.smooth, false);
            }
        }
    }
    for (const Preset& preset : PRESETS) {
        write(data, preset);
    }
    for (const Channel& entry : channels()) {
        if (entry.base == 0) {
            continue;
        }
        if (entry.constant == ConstantForm::SPECTRUM) {
            writeSpectrum(data, entry);
        }
        writeTexture(data, entry);
        if (entry.constant == ConstantForm::VALUE) {
            data.SetReal(entry.value, entry.presetValue);
            data.SetBool(entry.smooth, false);
        }
    }
}
