// SPDX-License-Identifier: MIT
#pragma once

#include "engine/plain_shader.h"

namespace engine {

/// A clear layer over another material.
class CoatingShader : public PlainShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    const InternalMedium* medium() const override { return substrate->medium(); }
    int countLobes() const override { return 1 + substrate->countLobes(); }
    /// A coat that tells no relief of its own follows what it lies on.
    void bump(SurfacePoint& point) const override;
    float displacement(const SurfacePoint& point) const override;
    bool isDisplaced() const override { return height.isSet() || substrate->isDisplaced(); }

    const SurfaceShader* substrate = nullptr;
    ColourInput absorption; ///< 1/m
    ScalarInput thickness;  ///< Micrometres.
    ScalarInput roughness;
    ScalarInput fresnel_scale;
    float ior = 1.5f;
    float average = 0; ///< Mean reflectance of the layer.
    bool interferes = false;
};

/// A sheet with a coated material on each side, which lets light through.
class ThinShader : public PlainShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    int countLobes() const override;

    struct Side {
        const SurfaceShader* shader = nullptr;
        ScalarInput roughness;
        ScalarInput fresnel_scale;
    };
    Side front, back;
    ScalarInput r_f; ///< Share of what gets in that the side's material scatters back; the rest goes through.
    ColourInput transmittance;
    float ior = 1.5f;
    float average = 0; ///< Mean reflectance of a coat.

private:
    Coat coatOf(const Side& side, const SurfacePoint& point) const;
};

} // namespace engine
