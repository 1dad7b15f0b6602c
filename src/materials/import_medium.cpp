// SPDX-License-Identifier: MIT
#include "materials/import_medium.h"

#include "materials/import_spectra.h"
#include "scene/phase_function.h"
#include "scene/volume_param.h"
#include "shared/parameter_ids.h"

using namespace Quenza;

namespace {

/// The spectrum of a constant parameter, else null.
const Spectrum* constantOf(const VolumeParam* param) {
    return param && param->getType() == VolumeParam::CONSTANT
               ? static_cast<const ConstantVolumeParam*>(param)->spectrum.getPointer()
               : nullptr;
}

void importPhaseFunction(BaseContainer& data, const PhaseFunction* function) {
    if (!function) {
        return;
    }
    if (function->getType() == UniformPhaseFunction::TYPE) {
        data.SetLong(MAT_PHASE_KIND, MAT_PHASE_UNIFORM);
        return;
    }
    data.SetLong(MAT_PHASE_KIND, MAT_PHASE_HENYEY_GREENSTEIN);
    const auto& henyey = static_cast<const HenyeyGreensteinPhaseFunction&>(*function);
    const Spectrum* const spectrum = constantOf(henyey.g_spectrum.getPointer());
    if (spectrum && spectrum->getType() == RGBSpectrum::TYPE) {
        const auto& colour = static_cast<const RGBSpectrum&>(*spectrum);
        data.SetVector(MAT_PHASE_G_COLOUR,
                       ::Vector(float(colour.rgb.x), float(colour.rgb.y), float(colour.rgb.z)));
        data.SetReal(MAT_PHASE_G_GAMMA, float(colour.gamma));
    }
}

void importBasic(BaseContainer& data, const BasicMedium& medium) {
    data.SetLong(MAT_MEDIUM_KIND, MAT_MEDIUM_BASIC);
    data.SetReal(MAT_MEDIUM_IOR, float(medium.ior));
    data.SetReal(MAT_MEDIUM_CAUCHY_B, float(medium.cauchy_b_coeff));
    importSpectrum(data, ABSORPTION_SPECTRUM, constantOf(medium.absorption_coefficient.getPointer()),
                   ColourMeaning::INVERTED);
    if (const SubsurfaceScattering* const scattering = medium.subsurface_scattering.getPointer()) {
        // A number where the page has a flag: documents hold both.
        data.SetReal(MAT_MEDIUM_SUBSURFACE, 1.0f);
        // The export doesn't turn this colour round: one that was exported comes back inverted.
        importSpectrum(data, SCATTERING_SPECTRUM, constantOf(scattering->scattering_coefficient.getPointer()),
                       ColourMeaning::INVERTED);
        importPhaseFunction(data, scattering->phase_function.getPointer());
    }
}

} // namespace

void importMedium(BaseContainer& data, const Medium* medium) {
    if (!medium) {
        return;
    }
    data.SetLong(MAT_MEDIUM_PRECEDENCE, medium->precedence);
    switch (medium->getType()) {
    case BasicMedium::TYPE:
        importBasic(data, static_cast<const BasicMedium&>(*medium));
        break;
    case Dermis::TYPE:
        data.SetLong(MAT_MEDIUM_KIND, MAT_MEDIUM_DERMIS);
        data.SetReal(MAT_DERMIS_HEMOGLOBIN, float(static_cast<const Dermis*>(medium)->hemoglobin_fraction));
        break;
    case Epidermis::TYPE: {
        const auto& skin = static_cast<const Epidermis&>(*medium);
        data.SetLong(MAT_MEDIUM_KIND, MAT_MEDIUM_EPIDERMIS);
        data.SetReal(MAT_EPIDERMIS_MELANIN, float(skin.melanin_fraction));
        data.SetReal(MAT_EPIDERMIS_MELANIN_TYPE, float(skin.melanin_type_blend));
        break;
    }
    case Atmosphere::TYPE: {
        const auto& air = static_cast<const Atmosphere&>(*medium);
        data.SetLong(MAT_MEDIUM_KIND, MAT_MEDIUM_ATMOSPHERE);
        data.SetReal(MAT_ATMOSPHERE_TURBIDITY, float(air.turbidity));
        data.SetVector(MAT_ATMOSPHERE_CENTRE,
                       ::Vector(float(air.center.x), float(air.center.z), float(air.center.y)));
        break;
    }
    default:
        break;
    }
}
