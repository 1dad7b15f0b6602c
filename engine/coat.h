// SPDX-License-Identifier: MIT
#pragma once

#include "engine/colour.h"

namespace engine {

/// A clear layer on a surface. What goes in or comes out through it loses what the layer reflects and
/// absorbs; light that is reflected to and fro below it comes out as Kelemen and Szirmay-Kalos, "A Microfacet
/// Based Coupled Specular-Matte BRDF Model" (2001) have it.
struct Coat {
    float eta = 1.5f;        ///< Its index over that of the air.
    float fresnel_scale = 1; ///< Of its reflectance.
    float film = 0;    ///< Thickness in nanometres of one that shows interference; 0: of one that doesn't.
    RGB depth;         ///< Optical depth straight through.
    float average = 0; ///< Mean of what it reflects of light from all sides; 0 for a film.
    bool near = true;  ///< It lies on the viewer's side.
    bool far = true;   ///< It lies on the other side.

    /// `cosine` is that of the direction outside.
    RGB reflected(float cosine) const;
    RGB transmitted(float cosine) const;
};

/// What a layer of the refractive index `eta` reflects.
RGB layerReflectance(float cosine, float eta, float fresnel_scale, float film);

} // namespace engine
