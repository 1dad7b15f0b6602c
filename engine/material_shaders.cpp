// SPDX-License-Identifier: MIT
#include "engine/material_shaders.h"

#include "engine/fresnel.h"
#include "engine/microfacet.h"
#include "engine/random.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

/// A surface that reflected more than it gets would never let a path end.
RGB limited(const RGB& albedo) {
    const auto limit = [](float v) { return std::clamp(v, 0.0f, 1.0f); };
    return {limit(albedo.r), limit(albedo.g), limit(albedo.b)};
}

RGB colourOfTriangle(Quenza::u64 triangle) {
    const Quenza::u64 bits = Random::scramble(triangle + 1);
    const auto part = [bits](int shift) { return 0.1f + 0.8f * float((bits >> shift) & 0xFF) / 255.0f; };
    return {part(0), part(8), part(16)};
}

Vec onSideOf(const Vec& normal, const Vec& facet) {
    // Bumps that turn a normal through the facet would let the surface swallow all light there.
    return dot(normal, facet) > 0.01f ? normal : normalise(normal + facet * (0.02f - dot(normal, facet)));
}

Lobe glossyLobe(const RGB& weight, float roughness, float ior, float fresnel_scale) {
    Lobe lobe;
    lobe.kind = Lobe::Kind::GLOSSY;
    lobe.weight = weight;
    lobe.roughness = std::clamp(roughness, 0.001f, 1.0f);
    lobe.eta = ior;
    lobe.fresnel_scale = fresnel_scale;
    return lobe;
}

} // namespace

void PlainShader::emit(const SurfacePoint& point, bool front, float weight, LayeredRadiance& sum) const {
    if (front || emits_back) {
        const RGB radiance = emission.at(point) * emission_factor.at(point) * weight;
        if (!isBlack(radiance)) {
            sum.add(radiance, layer);
        }
    }
}

void PlainShader::emitAverage(bool front, float weight, LayeredRadiance& sum) const {
    if (front || emits_back) {
        const RGB radiance = emission.average() * emission_factor.average() * weight;
        if (!isBlack(radiance)) {
            sum.add(radiance, layer);
        }
    }
}

void PlainShader::bump(SurfacePoint& point) const {
    const float area = length(cross(point.dpdu, point.dpdv));
    if (!(area > 0.0f)) {
        return;
    }
    if (normal_map) {
        const RGB turn = normal_map->at(point) * 2.0f - RGB{1.0f};
        const Vec n = normalise(point.dpdu) * turn.r + normalise(point.dpdv) * turn.g +
                      point.shading_normal * std::max(0.01f, turn.b);
        point.shading_normal = onSideOf(normalise(n), point.normal);
    }
    if (bump_map) {
        // Blinn, "Simulation of Wrinkled Surfaces", 1978.
        const TextureMap::Slope slope = bump_map->slopeAt(point);
        const Vec n = point.shading_normal;
        const float sign = dot(cross(point.dpdu, point.dpdv), n) < 0.0f ? -1.0f : 1.0f;
        const Vec turn = cross(n, point.dpdv) * slope.along_u - cross(n, point.dpdu) * slope.along_v;
        point.shading_normal = onSideOf(normalise(n + turn * (sign / area)), point.normal);
    }
}

void DiffuseShader::shade(const SurfacePoint& point, const ShadeContext&, const RGB& weight,
                          BSDF& bsdf) const {
    Lobe lobe;
    lobe.kind = kind;
    lobe.weight = weight * (random_colours ? colourOfTriangle(point.triangle) : limited(albedo.at(point)));
    lobe.roughness = std::max(0.0f, sigma.at(point));
    bsdf.add(lobe);
}

void PhongShader::shade(const SurfacePoint& point, const ShadeContext&, const RGB& weight, BSDF& bsdf) const {
    const float roughness = roughnessOfExponent(exponent.at(point));
    if (metal) {
        Lobe lobe;
        lobe.kind = Lobe::Kind::METAL;
        lobe.weight = weight * limited(colour.at(point));
        lobe.roughness = roughness;
        bsdf.add(lobe);
        return;
    }
    const float scale = std::max(0.0f, fresnel_scale.at(point));
    bsdf.add(glossyLobe(weight, roughness, ior, scale));
    Lobe ground;
    ground.kind = Lobe::Kind::COATED_DIFFUSE;
    ground.weight = weight * limited(colour.at(point));
    ground.eta = ior;
    ground.fresnel_scale = scale;
    ground.average = std::min(1.0f, scale * average);
    bsdf.add(ground);
}

void GlassShader::shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
                        BSDF& bsdf) const {
    Lobe lobe;
    lobe.weight = weight;
    lobe.eta = context.eta;
    lobe.transmittance = limited(layer_transmittance.at(point));
    if (!transparent) {
        lobe.kind = Lobe::Kind::MIRROR;
        lobe.weight = weight * lobe.transmittance;
    } else if (std::abs(context.eta - 1.0f) < 1e-4f) {
        lobe.kind = Lobe::Kind::PASS;
        lobe.weight = weight * lobe.transmittance;
    } else if (rough) {
        lobe.kind = Lobe::Kind::ROUGH_GLASS;
        lobe.roughness = roughnessOfExponent(exponent.at(point));
    } else {
        lobe.kind = Lobe::Kind::GLASS;
    }
    bsdf.add(lobe);
}

void CoatingShader::shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
                          BSDF& bsdf) const {
    const float scale = std::max(0.0f, fresnel_scale.at(point));
    bsdf.add(glossyLobe(weight, roughness.at(point), ior, scale));
    const float cosine = std::clamp(bsdf.viewCosine(), 0.0f, 1.0f);
    const float reflected = std::clamp(scale * fresnelDielectric(cosine, ior), 0.0f, 1.0f);
    // Down along the refracted direction, and up again about straight.
    const float inside = std::sqrt(std::max(0.0f, 1.0f - (1.0f - cosine * cosine) / (ior * ior)));
    const float way = std::max(0.0f, thickness.at(point)) * (1.0f / std::max(0.1f, inside) + 1.0f);
    const RGB absorbed = absorption.at(point) * -way;
    const RGB kept{std::exp(absorbed.r), std::exp(absorbed.g), std::exp(absorbed.b)};
    substrate->shade(point, context, weight * kept * (1.0f - reflected), bsdf);
}

void ThinShader::shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
                       BSDF& bsdf) const {
    const Side& side = context.front ? front : back;
    const float scale = std::max(0.0f, side.fresnel_scale.at(point));
    bsdf.add(glossyLobe(weight, side.roughness.at(point), ior, scale));
    const float reflected =
        std::clamp(scale * fresnelDielectric(std::clamp(bsdf.viewCosine(), 0.0f, 1.0f), ior), 0.0f, 1.0f);
    const float sent_back = std::clamp(r_f.at(point), 0.0f, 1.0f);
    const RGB within = weight * (1.0f - reflected);
    side.shader->shade(point, context, within * sent_back, bsdf);
    Lobe through;
    through.kind = Lobe::Kind::DIFFUSE_TRANSMIT;
    through.weight = within * limited(transmittance.at(point)) * (1.0f - sent_back);
    bsdf.add(through);
}

void PassShader::shade(const SurfacePoint&, const ShadeContext&, const RGB& weight, BSDF& bsdf) const {
    Lobe lobe;
    lobe.kind = Lobe::Kind::PASS;
    lobe.weight = weight;
    bsdf.add(lobe);
}

float MixShader::weightOf(size_t part, float value) const {
    if (!blends) {
        return std::clamp(value, 0.0f, 1.0f);
    }
    const float share = steps ? (value < 0.5f ? 0.0f : 1.0f) : std::clamp(value, 0.0f, 1.0f);
    return part == 0 ? 1.0f - share : share;
}

void MixShader::shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
                      BSDF& bsdf) const {
    for (size_t i = 0; i < parts.size(); ++i) {
        const float share = weightOf(i, parts[blends ? 0 : i].weight.at(point));
        if (share > 0.0f) {
            parts[i].shader->shade(point, context, weight * share, bsdf);
        }
    }
}

void MixShader::emit(const SurfacePoint& point, bool front, float weight, LayeredRadiance& sum) const {
    for (size_t i = 0; i < parts.size(); ++i) {
        const float share = weightOf(i, parts[blends ? 0 : i].weight.at(point));
        if (share > 0.0f) {
            parts[i].shader->emit(point, front, weight * share, sum);
        }
    }
}

void MixShader::emitAverage(bool front, float weight, LayeredRadiance& sum) const {
    for (size_t i = 0; i < parts.size(); ++i) {
        parts[i].shader->emitAverage(front, weight * weightOf(i, parts[blends ? 0 : i].weight.average()),
                                     sum);
    }
}

RGB MixShader::passing(const SurfacePoint& point) const {
    RGB sum{0.0f};
    for (size_t i = 0; i < parts.size(); ++i) {
        if (parts[i].shader->mayPass()) {
            sum += parts[i].shader->passing(point) * weightOf(i, parts[blends ? 0 : i].weight.at(point));
        }
    }
    return sum;
}

bool MixShader::mayPass() const {
    return std::any_of(parts.begin(), parts.end(), [](const Part& part) { return part.shader->mayPass(); });
}

const InternalMedium* MixShader::medium() const {
    for (const Part& part : parts) {
        if (const InternalMedium* const found = part.shader->medium()) {
            return found;
        }
    }
    return nullptr;
}

/// One normal serves all parts: that of the greatest.
void MixShader::bump(SurfacePoint& point) const {
    size_t greatest = 0;
    float most = -1;
    for (size_t i = 0; i < parts.size(); ++i) {
        const float share = weightOf(i, parts[blends ? 0 : i].weight.at(point));
        if (share > most) {
            most = share;
            greatest = i;
        }
    }
    if (!parts.empty()) {
        parts[greatest].shader->bump(point);
    }
}

} // namespace engine
