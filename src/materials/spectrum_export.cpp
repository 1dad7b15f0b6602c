// SPDX-License-Identifier: MIT
#include "materials/spectrum_export.h"

#include "shared/parameter_ids.h"
#include "shared/spectra.h"

using Quenza::Ref;
using Quenza::Spectrum;

namespace {

Ref<Spectrum> colourSpectrum(const BaseContainer& data, const SpectrumNumbers& numbers,
                             ColourMeaning meaning) {
    const Vector colour = data.GetVector(numbers.colour);
    const Vector rgb = meaning == ColourMeaning::INVERTED ? Vector(1.0f, 1.0f, 1.0f) - colour : colour;
    return makeRGBSpectrum(rgb, data.GetReal(numbers.gamma), data.GetReal(numbers.scale));
}

} // namespace

Ref<Spectrum> makeSpectrum(const BaseContainer& data, const SpectrumNumbers& numbers, ColourMeaning meaning) {
    switch (data.GetLong(numbers.type, MAT_SPECTRUM_RGB)) {
    case MAT_SPECTRUM_TABULATED:
        if (numbers.tabValues == 0) {
            return colourSpectrum(data, numbers, meaning);
        }
        return makeTabulatedSpectrum(data.GetReal(numbers.tabStart, 400.0f),
                                     data.GetReal(numbers.tabEnd, 700.0f), data.GetString(numbers.tabValues));
    case MAT_SPECTRUM_UNIFORM:
        return makeUniformSpectrum(data.GetReal(numbers.uniform));
    case MAT_SPECTRUM_PEAK:
        return makePeakSpectrum(data.GetReal(numbers.peakMin), data.GetReal(numbers.peakWidth),
                                data.GetReal(numbers.peakValue), data.GetReal(numbers.baseValue));
    case MAT_SPECTRUM_BLACKBODY:
        return makeBlackbodySpectrum(data.GetReal(numbers.temperature), data.GetReal(numbers.gain));
    default:
        return colourSpectrum(data, numbers, meaning);
    }
}
