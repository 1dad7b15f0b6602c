// SPDX-License-Identifier: MIT
#pragma once

#include "engine/surface_shader.h"
#include "engine/texturing.h"

namespace engine {

/// What all surfaces of their own have in common: emission, bumps and displacement.
class PlainShader : public SurfaceShader {
public:
    void emit(const SurfacePoint& point, bool front, float weight, LayeredRadiance& sum) const override;
    void emitAverage(bool front, float weight, LayeredRadiance& sum) const override;
    void bump(SurfacePoint& point) const override;
    float displacement(const SurfacePoint& point) const override { return height.at(point); }
    bool isDisplaced() const override { return height.isSet(); }

    ColourInput emission;
    ColourInput emission_factor{RGB{1.0f}};
    Quenza::u32 layer = 0;
    bool emits_back = false;
    ScalarInput bump_height; ///< Metres.
    VectorInput normal_map;
    ScalarInput height; ///< Metres.
};

/// Reflection of a dielectric layer.
Lobe glossyLobe(const RGB& weight, float roughness, float ior, float fresnel_scale);

} // namespace engine
