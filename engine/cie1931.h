// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>

namespace engine {

using Triple = std::array<double, 3>;
/// Row by row; it multiplies columns.
using ColourMatrix = std::array<double, 9>;

constexpr Triple transformed(const ColourMatrix& m, const Triple& v) {
    return {m[0] * v[0] + m[1] * v[1] + m[2] * v[2], m[3] * v[0] + m[4] * v[1] + m[5] * v[2],
            m[6] * v[0] + m[7] * v[1] + m[8] * v[2]};
}
constexpr ColourMatrix product(const ColourMatrix& a, const ColourMatrix& b) {
    ColourMatrix result{};
    for (size_t row = 0; row < 3; ++row)
        for (size_t column = 0; column < 3; ++column)
            for (size_t k = 0; k < 3; ++k)
                result[row * 3 + column] += a[row * 3 + k] * b[k * 3 + column];
    return result;
}

/// Between CIE XYZ and linear Rec.709 with a D65 white (the matrices of sRGB, IEC 61966-2-1, with more
/// digits).
inline constexpr ColourMatrix XYZ_TO_RGB = {3.2404542, -1.5371385, -0.4985314, -0.9692660, 1.8760108,
                                            0.0415560, 0.0556434,  -0.2040259, 1.0572252};
inline constexpr ColourMatrix RGB_TO_XYZ = {0.4124564, 0.3575761, 0.1804375, 0.2126729, 0.7151522,
                                            0.0721750, 0.0193339, 0.1191920, 0.9503041};
/// XYZ of the D65 white with Y = 1.
inline constexpr Triple D65_XYZ = {0.95047, 1.0, 1.08883};

/// The bounds of the observer's table, in nanometres.
inline constexpr int CIE_START = 380;
inline constexpr int CIE_END = 780;
inline constexpr int CIE_STEP = 10;

/// The colour matching functions x, y, z of the CIE 1931 standard observer (2 degrees) at a wavelength in
/// nanometres; zero outside the table.
Triple observerAt(double nanometres);

/// XYZ of a spectrum: the integral of `value(nanometres)` times the observer over the wavelength in metres.
/// What an equal-energy spectrum of 1 gives is EQUAL_ENERGY_Y in all three.
template <class Value>
Triple integrateXYZ(const Value& value) {
    Triple sum{};
    for (int nm = CIE_START; nm <= CIE_END; ++nm) {
        const Triple observer = observerAt(nm);
        const double v = value(double(nm));
        for (size_t i = 0; i < 3; ++i)
            sum[i] += observer[i] * v * 1e-9;
    }
    return sum;
}

inline constexpr double EQUAL_ENERGY_Y = 106.856e-9;

/// Lumens per watt at the observer's peak.
inline constexpr double LUMENS_PER_WATT = 683.0;

/// The adaption of a white to another one by Bradford's cone responses (Lam 1985): XYZ to XYZ.
ColourMatrix bradfordAdaption(const Triple& from_white, const Triple& to_white);

/// XYZ of a chromaticity, with Y = 1. `y` is above 0.
Triple xyzOfChromaticity(double x, double y);

} // namespace engine
