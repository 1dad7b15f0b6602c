// SPDX-License-Identifier: MIT
#include "materials/base_emission.h"

#include "materials/material_ids.h"
#include "shared/spectra.h"

using Quenza::Ref;
using Quenza::Spectrum;

namespace {

Ref<Spectrum> emissionSpectrum(const BaseContainer& material) {
    switch (material.GetLong(MAT_EMISSION_TYPE, MAT_SPECTRUM_RGB)) {
    case MAT_SPECTRUM_TABULATED:
        return makeTabulatedSpectrum(material.GetReal(MAT_EMISSION_TAB_START, 400.0f),
                                     material.GetReal(MAT_EMISSION_TAB_END, 700.0f),
                                     material.GetString(MAT_EMISSION_TAB_VALUES));
    case MAT_SPECTRUM_UNIFORM:
        return makeUniformSpectrum(material.GetReal(MAT_EMISSION_UNIFORM));
    case MAT_SPECTRUM_PEAK:
        return makePeakSpectrum(
            material.GetReal(MAT_EMISSION_PEAK_MIN), material.GetReal(MAT_EMISSION_PEAK_WIDTH),
            material.GetReal(MAT_EMISSION_PEAK_VALUE), material.GetReal(MAT_EMISSION_BASE_VALUE));
    case MAT_SPECTRUM_BLACKBODY:
        return makeBlackbodySpectrum(material.GetReal(MAT_EMISSION_TEMPERATURE),
                                     material.GetReal(MAT_EMISSION_GAIN));
    default:
        return makeRGBSpectrum(material.GetVector(MAT_EMISSION_COLOUR), material.GetReal(MAT_EMISSION_GAMMA),
                               material.GetReal(MAT_EMISSION_BRIGHTNESS));
    }
}

} // namespace

Ref<Quenza::WavelengthDependentParam> exportBaseEmission(const BaseContainer& material) {
    return material.GetBool(MAT_EMISSION_ENABLED) ? constantParam(emissionSpectrum(material)) : nullptr;
}
