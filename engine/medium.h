// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"
#include "foundation/types.h"

#include <algorithm>

namespace engine {

/// Sodium's yellow, for which refractive indices are told; nanometres.
inline constexpr float MEAN_WAVELENGTH = 589.0f;

/// What fills the inside of a surface.
struct InternalMedium {
    float ior = 1;
    float cauchy_b = 0;    ///< um^2: Cauchy's index ior + b / wavelength^2.
    RGB absorption{0.0f};  ///< 1/m
    RGB scattering{0.0f};  ///< 1/m
    float mean_cosine = 0; ///< Of the angle that scattering turns light by; -1 to 1.
    Quenza::i32 precedence = 0;

    bool scatters() const { return maxComponent(scattering) > 0.0f; }
    bool disperses() const { return cauchy_b != 0.0f; }
    RGB extinction() const { return absorption + scattering; }
    /// `wavelength` is in nanometres.
    float iorAt(float wavelength) const {
        const float um = wavelength * 1e-3f;
        return std::clamp(ior + cauchy_b / (um * um), 1.0f, 10.0f);
    }
};

} // namespace engine
