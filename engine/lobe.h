// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"

namespace engine {

class ReflectanceCurve;

/// One way in which a surface sends light on.
struct Lobe {
    enum class Kind {
        DIFFUSE,
        OREN_NAYAR,       ///< `roughness` is the slopes' deviation in radians.
        DIFFUSE_TRANSMIT, ///< To the other side.
        GLOSSY,           ///< A rough dielectric's reflection.
        METAL,            ///< A rough metal of the weight's colour, or of a curve.
        ROUGH_GLASS,      ///< Reflection and refraction.
        GLASS,            ///< The same of a smooth surface.
        MIRROR,
        PASS, ///< Straight on, as if nothing was there.
    };

    Kind kind = Kind::DIFFUSE;
    RGB weight{1.0f};
    float roughness = 0;
    float eta = 1;                           ///< Refractive index behind the surface over that before it.
    float fresnel_scale = 1;                 ///< Of GLOSSY.
    float film = 0;                          ///< Of GLOSSY, as a coat's.
    RGB transmittance{1.0f};                 ///< Colours what a GLASS or ROUGH_GLASS lets in.
    const ReflectanceCurve* curve = nullptr; ///< Of a measured METAL, else null.

    /// Has a density: light can be evaluated for any pair of directions.
    bool isSmooth() const { return kind < Kind::GLASS; }
    bool isDiffuse() const { return kind <= Kind::DIFFUSE_TRANSMIT; }
};

} // namespace engine
