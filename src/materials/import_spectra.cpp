// SPDX-License-Identifier: MIT
#include "materials/import_spectra.h"

#include "shared/parameter_ids.h"

#include <algorithm>
#include <cmath>

using namespace Quenza;

namespace {

void importColour(BaseContainer& data, const SpectrumNumbers& numbers, const RGBSpectrum& spectrum,
                  ColourMeaning meaning) {
    const Vec3d& rgb = spectrum.rgb;
    const double largest = std::max({rgb.x, rgb.y, rgb.z});
    const double scale = largest > 1.0 ? largest : 1.0;
    const ::Vector colour(float(rgb.x / scale), float(rgb.y / scale), float(rgb.z / scale));
    data.SetLong(numbers.type, MAT_SPECTRUM_RGB);
    data.SetVector(numbers.colour,
                   meaning == ColourMeaning::INVERTED ? ::Vector(1.0f, 1.0f, 1.0f) - colour : colour);
    data.SetReal(numbers.scale, float(scale));
    data.SetReal(numbers.gamma, float(spectrum.gamma));
}

void importPeak(BaseContainer& data, const SpectrumNumbers& numbers, const PeakSpectrum& spectrum) {
    data.SetLong(numbers.type, MAT_SPECTRUM_PEAK);
    data.SetReal(numbers.peakMin, float(spectrum.peak_min));
    data.SetReal(numbers.peakWidth, float(spectrum.peak_width));
    data.SetReal(numbers.peakValue, float(spectrum.peak_value));
    data.SetReal(numbers.baseValue, float(spectrum.base_value));
}

/// Metres become nanometres. The range of an absorption or scattering coefficient is stored in whole ones,
/// that of an emission is not.
void setWavelength(BaseContainer& data, int32_t id, double metres) {
    const double nanometres = metres * 1e9;
    if (id == MAT_EMISSION_TAB_START || id == MAT_EMISSION_TAB_END) {
        data.SetReal(id, float(nanometres));
    } else {
        data.SetLong(id, int32_t(std::lround(std::clamp(nanometres, 0.0, 1e9))));
    }
}

void importTable(BaseContainer& data, const SpectrumNumbers& numbers, const RegularSpectrum& spectrum) {
    constexpr int32_t DECIMALS = 6;
    ::String values;
    for (const double value : spectrum.values) {
        values += RealToString(value, -1, DECIMALS) + " ";
    }
    data.SetLong(numbers.type, MAT_SPECTRUM_TABULATED);
    setWavelength(data, numbers.tabStart, spectrum.start_wavelength);
    setWavelength(data, numbers.tabEnd, spectrum.end_wavelength);
    data.SetString(numbers.tabValues, values);
}

} // namespace

bool importSpectrum(BaseContainer& data, const SpectrumNumbers& numbers, const Spectrum* spectrum,
                    ColourMeaning meaning) {
    if (!spectrum) {
        return false;
    }
    switch (spectrum->getType()) {
    case RGBSpectrum::TYPE:
        importColour(data, numbers, static_cast<const RGBSpectrum&>(*spectrum), meaning);
        return true;
    case BlackBodySpectrum::TYPE: {
        const auto& body = static_cast<const BlackBodySpectrum&>(*spectrum);
        data.SetLong(numbers.type, MAT_SPECTRUM_BLACKBODY);
        data.SetReal(numbers.temperature, float(body.temperature));
        data.SetReal(numbers.gain, float(body.gain));
        return true;
    }
    case UniformSpectrum::TYPE:
        data.SetLong(numbers.type, MAT_SPECTRUM_UNIFORM);
        data.SetReal(numbers.uniform, float(static_cast<const UniformSpectrum&>(*spectrum).value));
        return true;
    case PeakSpectrum::TYPE:
        importPeak(data, numbers, static_cast<const PeakSpectrum&>(*spectrum));
        return true;
    case RegularSpectrum::TYPE:
        if (numbers.tabValues == 0) {
            return false;
        }
        importTable(data, numbers, static_cast<const RegularSpectrum&>(*spectrum));
        return true;
    default:
        return false;
    }
}
