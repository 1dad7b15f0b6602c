// SPDX-License-Identifier: MIT
#include "engine/skin.h"

#include "engine/colour.h"
#include "scene/spectrum.h"

#include <array>
#include <cmath>
#include <functional>

namespace engine {

namespace {

constexpr float SKIN_IOR = 1.4f;
constexpr double PER_METRE = 1000.0; // The paper's coefficients are per millimetre.
/// Share of the blood that carries oxygen.
constexpr double OXYGENATED = 0.75;

/// Molar extinction of haemoglobin with and without oxygen, in 1/(cm mol/l): the table of Prahl, "Optical
/// Absorption of Hemoglobin" (Oregon Medical Laser Center, 1999).
struct Haemoglobin {
    double nanometres, oxygenated, deoxygenated;
};
constexpr std::array<Haemoglobin, 16> HAEMOGLOBIN{{
    {400, 266232, 223296},
    {420, 480360, 407560},
    {440, 102580, 413280},
    {450, 62816, 103292},
    {460, 44480, 23388.8},
    {480, 26629.2, 14550},
    {500, 20932.8, 20862},
    {520, 24202.4, 31589.6},
    {540, 53236, 46592},
    {560, 32613.2, 53788},
    {580, 50104, 37020},
    {600, 3200, 14677.2},
    {620, 942, 6509.6},
    {640, 442, 4345.2},
    {660, 319.6, 3226.56},
    {700, 290, 1794.28},
}};

double haemoglobinAt(double nanometres) {
    size_t i = 1;
    while (i + 1 < HAEMOGLOBIN.size() && HAEMOGLOBIN[i].nanometres < nanometres) {
        ++i;
    }
    const Haemoglobin& a = HAEMOGLOBIN[i - 1];
    const Haemoglobin& b = HAEMOGLOBIN[i];
    const double t = std::clamp((nanometres - a.nanometres) / (b.nanometres - a.nanometres), 0.0, 1.0);
    const auto mix = [](const Haemoglobin& h) {
        return OXYGENATED * h.oxygenated + (1 - OXYGENATED) * h.deoxygenated;
    };
    // 150 g of haemoglobin in a litre of blood, 64500 g in a mole; from 1/cm to 1/mm.
    return (mix(a) * (1 - t) + mix(b) * t) * 2.303 * 150 / 64500 / 10;
}

double baseline(double nanometres) {
    return 0.0244 + 8.53 * std::exp(-(nanometres - 154) / 66.2);
}

double reducedScattering(double nanometres) {
    return 14.74 * std::pow(nanometres, -0.22) + 2.2e11 * std::pow(nanometres, -4.0);
}

/// Of a coefficient per millimetre that is a function of nanometres.
RGB coefficientOf(const std::function<double(double)>& perMillimetre) {
    Quenza::RegularSpectrum spectrum;
    spectrum.start_wavelength = 380e-9;
    spectrum.end_wavelength = 780e-9;
    for (int nm = 380; nm <= 780; nm += 10) {
        spectrum.values.push_back(perMillimetre(double(nm)) * PER_METRE);
    }
    return absorptionOf(spectrum);
}

InternalMedium skin(const std::function<double(double)>& absorption, double scattering_share) {
    InternalMedium medium;
    medium.ior = SKIN_IOR;
    medium.absorption = coefficientOf(absorption);
    medium.scattering = coefficientOf([&](double nm) { return scattering_share * reducedScattering(nm); });
    return medium;
}

} // namespace

InternalMedium epidermis(float melanin, float brown) {
    const auto share = double(std::clamp(melanin, 0.0f, 1.0f));
    const auto blend = double(std::clamp(brown, 0.0f, 1.0f));
    return skin(
        [=](double nm) {
            const double eumelanin = 6.6e10 * std::pow(nm, -3.33);
            const double pheomelanin = 2.9e14 * std::pow(nm, -4.75);
            return share * (blend * eumelanin + (1 - blend) * pheomelanin) + (1 - share) * baseline(nm);
        },
        1.0);
}

InternalMedium dermis(float haemoglobin) {
    const auto share = double(std::clamp(haemoglobin, 0.0f, 1.0f));
    return skin([=](double nm) { return share * haemoglobinAt(nm) + (1 - share) * baseline(nm); }, 0.5);
}

} // namespace engine
