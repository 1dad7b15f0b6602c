// SPDX-License-Identifier: MIT
#include "shared/spectra.h"

#include "foundation/string_utils.h"

#include <sstream>

using namespace Quenza;

namespace {

double numberOrZero(const std::string& text) {
    try {
        return stringToDouble(text);
    } catch (const StringUtilsExcep&) {
        return 0.0;
    }
}

} // namespace

Ref<Spectrum> makeRGBSpectrum(const ::Vector& rgb, float gamma, float scale) {
    const ::Vector scaled = rgb * scale;
    return new RGBSpectrum(Vec3d{double(scaled.x), double(scaled.y), double(scaled.z)}, double(gamma));
}

Ref<Spectrum> makeUniformSpectrum(float value) {
    return new UniformSpectrum(double(value));
}

Ref<Spectrum> makePeakSpectrum(float peakMin, float peakWidth, float peakValue, float baseValue) {
    return new PeakSpectrum(double(peakMin), double(peakWidth), double(peakValue), double(baseValue));
}

Ref<Spectrum> makeBlackbodySpectrum(float temperature, float gain) {
    return new BlackBodySpectrum(double(temperature), double(gain));
}

Ref<Spectrum> makeTabulatedSpectrum(float startNm, float endNm, const ::String& values) {
    constexpr double NANOMETRE = 1e-9;
    const Ref<RegularSpectrum> spectrum = new RegularSpectrum;
    spectrum->start_wavelength = double(startNm) * NANOMETRE;
    spectrum->end_wavelength = double(endNm) * NANOMETRE;
    std::istringstream words(values.GetUtf8());
    for (std::string word; words >> word;) {
        spectrum->values.push_back(numberOrZero(word));
    }
    if (spectrum->values.size() < 2) {
        spectrum->values = {};
        spectrum->values.push_back(0.1);
        spectrum->values.push_back(0.1);
    }
    spectrum->num_values = static_cast<i32>(spectrum->values.size());
    return spectrum;
}

Ref<WavelengthDependentParam> constantParam(const Ref<Spectrum>& spectrum) {
    return new ConstantWavelengthDependentParam(spectrum);
}
