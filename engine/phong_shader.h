// SPDX-License-Identifier: MIT
#pragma once

#include "engine/plain_shader.h"
#include "engine/reflectance.h"

#include <optional>

namespace engine {

/// A diffuse ground under a glossy dielectric layer, or a glossy metal.
class PhongShader : public PlainShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    int countLobes() const override { return metal ? 1 : 2; }

    bool metal = false;
    std::optional<ReflectanceCurve> measured; ///< Of a metal; else the colour is its.
    ColourInput colour;                       ///< Of the metal, or of the diffuse ground.
    ScalarInput exponent;
    ScalarInput fresnel_scale;
    float ior = 1.5f;
    float average = 0; ///< Mean reflectance of the layer.
};

} // namespace engine
