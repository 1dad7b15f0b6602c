// SPDX-License-Identifier: MIT
#include "engine/colour.h"

#include "engine/cie1931.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

/// The luminance of an equal-energy spectral radiance of 1 W/(m^2 sr m), in cd/m^2.
constexpr double UNIT_LUMINANCE = LUMENS_PER_WATT * EQUAL_ENERGY_Y;

double finite(double value) {
    return std::isfinite(value) ? value : 0.0;
}

/// A colour that the primaries can't show is mixed with white until they can, which keeps its luminance.
RGB fromTriple(Triple v) {
    const double y = RGB_TO_XYZ[3] * v[0] + RGB_TO_XYZ[4] * v[1] + RGB_TO_XYZ[5] * v[2];
    const double least = std::min({v[0], v[1], v[2]});
    if (least < 0.0 && y > 0.0)
        for (double& c : v)
            c = y + (c - y) * y / (y - least);
    // Within what a float holds, with room for the sums that come.
    const auto component = [](double c) { return float(std::clamp(finite(c), 0.0, 1e30)); };
    return {component(v[0]), component(v[1]), component(v[2])};
}

Triple scaled(const Triple& v, double s) {
    return {v[0] * s, v[1] * s, v[2] * s};
}

/// Planck's law: spectral radiance in W/(m^2 sr m).
double planck(double nanometres, double kelvin) {
    constexpr double TWO_H_C2 = 1.191042972e-16; // W m^2/sr
    constexpr double H_C_PER_K = 1.438776877e-2; // m K
    const double metres = nanometres * 1e-9;
    return TWO_H_C2 / (std::pow(metres, 5) * std::expm1(H_C_PER_K / (metres * kelvin)));
}

Triple xyzOf(const Quenza::BlackBodySpectrum& spectrum) {
    if (!(spectrum.temperature > 0.0))
        return {};
    return integrateXYZ([&](double nm) { return spectrum.gain * planck(nm, spectrum.temperature); });
}

/// No visible wavelength is below 1 nm or above 1 m, so the number tells the unit: nanometres as the plug-in
/// writes them, or metres.
Triple xyzOf(const Quenza::PeakSpectrum& spectrum) {
    const bool metres = std::abs(spectrum.peak_min) < 1.0 && std::abs(spectrum.peak_width) < 1.0;
    const double unit = metres ? 1e9 : 1.0;
    const double begin = spectrum.peak_min * unit;
    const double end = begin + spectrum.peak_width * unit;
    return integrateXYZ(
        [&](double nm) { return nm >= begin && nm <= end ? spectrum.peak_value : spectrum.base_value; });
}

Triple xyzOf(const Quenza::RegularSpectrum& spectrum) {
    const Quenza::u64 count = spectrum.values.size();
    const double start = spectrum.start_wavelength * 1e9;
    const double range = spectrum.end_wavelength * 1e9 - start;
    if (count == 0 || !(range > 0.0))
        return {};
    return integrateXYZ([&](double nm) {
        const double position = (nm - start) / range * double(count - 1);
        if (!(position > 0.0))
            return spectrum.values[0];
        if (position >= double(count - 1))
            return spectrum.values[count - 1];
        const Quenza::u64 index = Quenza::u64(position);
        const double t = position - double(index);
        return spectrum.values[index] * (1.0 - t) + spectrum.values[index + 1] * t;
    });
}

/// The integral of a spectrum that is no RGB and not uniform.
Triple integralOf(const Quenza::Spectrum& spectrum) {
    switch (spectrum.getType()) {
    case Quenza::BlackBodySpectrum::TYPE:
        return xyzOf(static_cast<const Quenza::BlackBodySpectrum&>(spectrum));
    case Quenza::PeakSpectrum::TYPE:
        return xyzOf(static_cast<const Quenza::PeakSpectrum&>(spectrum));
    case Quenza::RegularSpectrum::TYPE:
        return xyzOf(static_cast<const Quenza::RegularSpectrum&>(spectrum));
    default:
        return {};
    }
}

Triple linear(const Quenza::RGBSpectrum& spectrum) {
    const auto component = [&](double c) { return c > 0.0 ? finite(std::pow(c, spectrum.gamma)) : 0.0; };
    return {component(spectrum.rgb.x), component(spectrum.rgb.y), component(spectrum.rgb.z)};
}

/// The colour under an equal-energy light, which is white for a spectrum of 1.
Triple factorOf(const Triple& integral) {
    Triple xyz = scaled(integral, 1.0 / EQUAL_ENERGY_Y);
    for (size_t i = 0; i < 3; ++i)
        xyz[i] *= D65_XYZ[i];
    return transformed(XYZ_TO_RGB, xyz);
}

} // namespace

RGB reflectanceOf(const Quenza::Spectrum& spectrum) {
    switch (spectrum.getType()) {
    case Quenza::UniformSpectrum::TYPE: {
        const double value = static_cast<const Quenza::UniformSpectrum&>(spectrum).value;
        return fromTriple({value, value, value});
    }
    case Quenza::RGBSpectrum::TYPE:
        return fromTriple(linear(static_cast<const Quenza::RGBSpectrum&>(spectrum)));
    case Quenza::BlackBodySpectrum::TYPE: {
        // Watts are no reflectance: its colour alone, with the gain as its luminance.
        const Triple xyz = integralOf(spectrum);
        const double gain = static_cast<const Quenza::BlackBodySpectrum&>(spectrum).gain;
        return xyz[1] > 0.0 ? fromTriple(factorOf(scaled(xyz, gain * EQUAL_ENERGY_Y / xyz[1]))) : RGB();
    }
    default:
        return fromTriple(factorOf(integralOf(spectrum)));
    }
}

RGB radianceOf(const Quenza::Spectrum& spectrum) {
    switch (spectrum.getType()) {
    case Quenza::UniformSpectrum::TYPE: {
        const double value = static_cast<const Quenza::UniformSpectrum&>(spectrum).value * UNIT_LUMINANCE;
        return fromTriple(transformed(XYZ_TO_RGB, {value, value, value}));
    }
    case Quenza::RGBSpectrum::TYPE:
        return fromTriple(scaled(linear(static_cast<const Quenza::RGBSpectrum&>(spectrum)), UNIT_LUMINANCE));
    default:
        return fromTriple(transformed(XYZ_TO_RGB, scaled(integralOf(spectrum), LUMENS_PER_WATT)));
    }
}

RGB absorptionOf(const Quenza::Spectrum& spectrum) {
    return reflectanceOf(spectrum);
}

} // namespace engine
