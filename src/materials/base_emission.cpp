// SPDX-License-Identifier: MIT
#include "materials/base_emission.h"

#include "materials/spectrum_export.h"
#include "shared/parameter_ids.h"
#include "shared/spectra.h"

Quenza::Ref<Quenza::WavelengthDependentParam> exportBaseEmission(const BaseContainer& material) {
    return material.GetBool(MAT_EMISSION_ENABLED) ? constantParam(makeSpectrum(material, EMISSION_SPECTRUM))
                                                  : nullptr;
}
