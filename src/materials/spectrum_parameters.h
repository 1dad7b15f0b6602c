// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "host/basecontainer.h"
#include "materials/channels.h"
#include "scene/spectrum.h"

/// Where a material's container holds a spectrum that the artist composes. 0 for what a spectrum doesn't
/// offer.
struct SpectrumParameters {
    /// One of MAT_SPECTRUM_...
    int32_t type;
    int32_t colour;
    int32_t gamma;
    /// Multiplies the colour.
    int32_t scale;
    int32_t temperature;
    int32_t gain;
    int32_t peakMin;
    int32_t peakWidth;
    int32_t peakValue;
    int32_t baseValue;
    int32_t uniform;
    // Nanometres, and the values between blanks.
    int32_t tabStart;
    int32_t tabEnd;
    int32_t tabValues;
};

extern const SpectrumParameters EMISSION_SPECTRUM;
extern const SpectrumParameters ABSORPTION_SPECTRUM;
extern const SpectrumParameters SCATTERING_SPECTRUM;
/// Of a channel with a constant of form SPECTRUM. It has no tabulated form.
SpectrumParameters spectrumParameters(const Channel& channel);

enum class ColourMeaning : uint8_t {
    AS_SEEN,
    /// The artist picks the colour that is left over.
    INVERTED,
};

/// The spectrum that the container holds. A type that the spectrum doesn't offer counts as RGB.
Quenza::Ref<Quenza::Spectrum> makeSpectrum(const BaseContainer& data, const SpectrumParameters& parameters,
                                           ColourMeaning meaning = ColourMeaning::AS_SEEN);
