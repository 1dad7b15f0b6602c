// SPDX-License-Identifier: MIT
#pragma once

#include "engine/surface_shader.h"
#include "engine/texture_map.h"

#include <memory>
#include <vector>

namespace engine {

/// What all surfaces of their own have in common: emission and bumps.
class PlainShader : public SurfaceShader {
public:
    void emit(const SurfacePoint& point, bool front, float weight, LayeredRadiance& sum) const override;
    void emitAverage(bool front, float weight, LayeredRadiance& sum) const override;
    void bump(SurfacePoint& point) const override;

    ColourParam emission{RGB{0.0f}, nullptr};
    ColourParam emission_factor;
    Quenza::u32 layer = 0;
    bool emits_back = false;
    std::shared_ptr<const TextureMap> bump_map;   ///< Metres.
    std::shared_ptr<const TextureMap> normal_map; ///< 0.5 is no turn.
};

class DiffuseShader : public PlainShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;

    Lobe::Kind kind = Lobe::Kind::DIFFUSE; ///< Or OREN_NAYAR, or DIFFUSE_TRANSMIT.
    ColourParam albedo;
    NumberParam sigma;
    bool random_colours = false; ///< Each triangle in a colour of its own.
    const InternalMedium* inside = nullptr;
    const InternalMedium* medium() const override { return inside; }
};

class PhongShader : public PlainShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;

    bool metal = false;
    ColourParam colour; ///< Of the metal, or of the diffuse ground.
    NumberParam exponent;
    NumberParam fresnel_scale;
    float ior = 1.5f;
    float average = 0; ///< Mean reflectance of the layer.
};

class GlassShader : public PlainShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    const InternalMedium* medium() const override { return transparent ? inside : nullptr; }

    bool transparent = true; ///< Else a mirror.
    bool rough = false;
    NumberParam exponent;
    ColourParam layer_transmittance;
    const InternalMedium* inside = nullptr;
};

class CoatingShader : public PlainShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    const InternalMedium* medium() const override { return substrate->medium(); }

    const SurfaceShader* substrate = nullptr;
    ColourParam absorption; ///< 1/m
    NumberParam thickness;  ///< Metres.
    NumberParam roughness;
    NumberParam fresnel_scale;
    float ior = 1.5f;
};

class ThinShader : public PlainShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;

    struct Side {
        const SurfaceShader* shader = nullptr;
        NumberParam roughness;
        NumberParam fresnel_scale;
    };
    Side front, back;
    NumberParam r_f;
    ColourParam transmittance;
    float ior = 1.5f;
};

/// Nothing there, or an opening to the background.
class PassShader : public SurfaceShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    RGB passing(const SurfacePoint&) const override { return RGB{1.0f}; }
    bool mayPass() const override { return true; }
};

/// A weighted sum; a blend is one whose weights are 1 together.
class MixShader : public SurfaceShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    void emit(const SurfacePoint& point, bool front, float weight, LayeredRadiance& sum) const override;
    void emitAverage(bool front, float weight, LayeredRadiance& sum) const override;
    RGB passing(const SurfacePoint& point) const override;
    bool mayPass() const override;
    const InternalMedium* medium() const override;
    void bump(SurfacePoint& point) const override;

    struct Part {
        const SurfaceShader* shader = nullptr;
        NumberParam weight;
    };
    std::vector<Part> parts;
    /// Two parts: the first parameter is the share of the second, the other one is not looked at.
    bool blends = false;
    bool steps = false; ///< A blend of one or the other.

private:
    float weightOf(size_t part, float value) const;
};

} // namespace engine
