// SPDX-License-Identifier: MIT
#include "engine/skin.h"

#include "engine/colour.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>

namespace engine {

namespace {

constexpr float SKIN_IOR = 1.4f;
constexpr double PER_METRE = 1000.0; // The paper's coefficients are per millimetre.
/// Share of the blood that carries oxygen.
constexpr double OXYGENATED = 0.75;

/// The wavelength in the middle of a channel, and there the molar extinction of haemoglobin with and without
/// oxygen, in 1/(cm mol/l): the table of Prahl, "Optical Absorption of Hemoglobin" (Oregon Medical Laser
/// Center, 1999).
struct Channel {
    double nanometres, oxygenated, deoxygenated;
};
constexpr std::array<Channel, 3> CHANNELS{{
    {620, 942, 6509.6},
    {550, 43016, 53412},
    {450, 62816, 103292},
}};

/// Per millimetre of pure blood.
double absorptionOf(const Channel& h) {
    const double molar = OXYGENATED * h.oxygenated + (1 - OXYGENATED) * h.deoxygenated;
    // 150 g of haemoglobin in a litre of blood, 64500 g in a mole; from 1/cm to 1/mm.
    return molar * 2.303 * 150 / 64500 / 10;
}

double baseline(double nanometres) {
    return 0.0244 + 8.53 * std::exp(-(nanometres - 154) / 66.2);
}

double reducedScattering(double nanometres) {
    return 14.74 * std::pow(nanometres, -0.22) + 2.2e11 * std::pow(nanometres, -4.0);
}

/// A coefficient per millimetre at the middles of the three channels. Their means would be ruled by the steep
/// flanks of the spectra, and skin far too dark.
RGB coefficientOf(const std::function<double(const Channel&)>& perMillimetre) {
    const auto at = [&](size_t channel) { return float(perMillimetre(CHANNELS[channel]) * PER_METRE); };
    return {at(0), at(1), at(2)};
}

InternalMedium skin(const std::function<double(const Channel&)>& absorption, double scattering_share) {
    InternalMedium medium;
    medium.ior = SKIN_IOR;
    medium.absorption = coefficientOf(absorption);
    medium.scattering =
        coefficientOf([&](const Channel& h) { return scattering_share * reducedScattering(h.nanometres); });
    return medium;
}

} // namespace

InternalMedium epidermis(float melanin, float brown) {
    const auto share = double(std::clamp(melanin, 0.0f, 1.0f));
    const auto blend = double(std::clamp(brown, 0.0f, 1.0f));
    return skin(
        [=](const Channel& h) {
            const double nm = h.nanometres;
            const double eumelanin = 6.6e10 * std::pow(nm, -3.33);
            const double pheomelanin = 2.9e14 * std::pow(nm, -4.75);
            return share * (blend * eumelanin + (1 - blend) * pheomelanin) + (1 - share) * baseline(nm);
        },
        1.0);
}

InternalMedium dermis(float haemoglobin) {
    const auto share = double(std::clamp(haemoglobin, 0.0f, 1.0f));
    return skin(
        [=](const Channel& h) { return share * absorptionOf(h) + (1 - share) * baseline(h.nanometres); },
        0.5);
}

} // namespace engine
