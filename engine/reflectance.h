// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"

#include <array>
#include <functional>

namespace engine {

/// How a surface of measured optical constants reflects, by the cosine of the angle to its normal.
class ReflectanceCurve {
public:
    /// `reflectance(nanometres, cosine)` is between 0 and 1; it is seen under an equal-energy light.
    explicit ReflectanceCurve(const std::function<double(double, double)>& reflectance);

    /// `cosine` is between 0 and 1.
    RGB at(float cosine) const;

private:
    static constexpr size_t STEPS = 64;
    std::array<RGB, STEPS + 1> values_;
};

/// Reflectance of a film of the refractive index `eta` and a thickness in nanometres that has air on both
/// sides: interference of all its inner reflections (Airy 1831; Born and Wolf, "Principles of Optics", 7.6).
/// Colours fade as the film becomes too thick for the eye to tell wavelengths apart.
RGB filmReflectance(float cosine, float eta, float thickness);

} // namespace engine
