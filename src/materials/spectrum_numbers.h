// SPDX-License-Identifier: MIT
#pragma once

#include "shared/parameter_ids.h"

#include <cstdint>

/// Numbers of the container that describe one spectrum: its type, and what each type needs. 0 where a
/// spectrum has no such parameter.
struct SpectrumNumbers {
    /// MAT_SPECTRUM_...
    int32_t type;
    // RGB.
    int32_t colour;
    int32_t scale;
    int32_t gamma;
    // Blackbody: kelvins.
    int32_t temperature;
    int32_t gain;
    // Peak: nanometres.
    int32_t peakMin;
    int32_t peakWidth;
    int32_t peakValue;
    int32_t baseValue;
    int32_t uniform;
    // Tabulated: nanometres, values in a text.
    int32_t tabStart;
    int32_t tabEnd;
    int32_t tabValues;
};

inline constexpr SpectrumNumbers EMISSION_SPECTRUM = {
    MAT_EMISSION_TYPE,        MAT_EMISSION_COLOUR,     MAT_EMISSION_BRIGHTNESS, MAT_EMISSION_GAMMA,
    MAT_EMISSION_TEMPERATURE, MAT_EMISSION_GAIN,       MAT_EMISSION_PEAK_MIN,   MAT_EMISSION_PEAK_WIDTH,
    MAT_EMISSION_PEAK_VALUE,  MAT_EMISSION_BASE_VALUE, MAT_EMISSION_UNIFORM,    MAT_EMISSION_TAB_START,
    MAT_EMISSION_TAB_END,     MAT_EMISSION_TAB_VALUES};

inline constexpr SpectrumNumbers ABSORPTION_SPECTRUM = {
    MAT_ABSORPTION_TYPE,        MAT_ABSORPTION_COLOUR,     MAT_ABSORPTION_SCALE,    MAT_ABSORPTION_GAMMA,
    MAT_ABSORPTION_TEMPERATURE, MAT_ABSORPTION_GAIN,       MAT_ABSORPTION_PEAK_MIN, MAT_ABSORPTION_PEAK_WIDTH,
    MAT_ABSORPTION_PEAK_VALUE,  MAT_ABSORPTION_BASE_VALUE, MAT_ABSORPTION_UNIFORM,  MAT_ABSORPTION_TAB_START,
    MAT_ABSORPTION_TAB_END,     MAT_ABSORPTION_TAB_VALUES};

inline constexpr SpectrumNumbers SCATTERING_SPECTRUM = {
    MAT_SCATTERING_TYPE,        MAT_SCATTERING_COLOUR,     MAT_SCATTERING_SCALE,    MAT_SCATTERING_GAMMA,
    MAT_SCATTERING_TEMPERATURE, MAT_SCATTERING_GAIN,       MAT_SCATTERING_PEAK_MIN, MAT_SCATTERING_PEAK_WIDTH,
    MAT_SCATTERING_PEAK_VALUE,  MAT_SCATTERING_BASE_VALUE, MAT_SCATTERING_UNIFORM,  MAT_SCATTERING_TAB_START,
    MAT_SCATTERING_TAB_END,     MAT_SCATTERING_TAB_VALUES};

/// Of the numbered channel that begins at `base`. Its type can be Tabulated, but it has no table.
constexpr SpectrumNumbers channelSpectrum(int32_t base) {
    return {base + MAT_OFFSET_TYPE,
            base + MAT_OFFSET_COLOUR,
            base + MAT_OFFSET_BRIGHTNESS,
            base + MAT_OFFSET_GAMMA,
            base + MAT_OFFSET_TEMPERATURE,
            base + MAT_OFFSET_GAIN,
            base + MAT_OFFSET_PEAK_MIN,
            base + MAT_OFFSET_PEAK_WIDTH,
            base + MAT_OFFSET_PEAK_VALUE,
            base + MAT_OFFSET_BASE_VALUE,
            base + MAT_OFFSET_UNIFORM,
            0,
            0,
            0};
}
