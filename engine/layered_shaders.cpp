// SPDX-License-Identifier: MIT
#include "engine/layered_shaders.h"

#include <algorithm>

namespace engine {

namespace {

/// In micrometres; a metre of varnish is opaque or clear, and its numbers still finite.
constexpr float MAX_THICKNESS = 1e6f;

} // namespace

void CoatingShader::shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
                          BSDF& bsdf) const {
    const float depth = std::clamp(thickness.at(point), 0.0f, MAX_THICKNESS);
    Coat coat;
    coat.eta = ior;
    coat.fresnel_scale = std::max(0.0f, fresnel_scale.at(point));
    coat.film = interferes ? depth * 1e3f : 0.0f;
    coat.average = coat.film > 0.0f ? 0.0f : std::min(1.0f, coat.fresnel_scale * average);
    coat.depth = absorption.at(point) * (depth * 1e-6f);
    // Glass has its coat outside alone; what has no inside is coated on both sides.
    coat.near = context.front || !medium();
    coat.far = !context.front || !medium();
    if (coat.near) {
        Lobe lobe = glossyLobe(weight, roughness.at(point), ior, coat.fresnel_scale);
        lobe.film = coat.film;
        bsdf.add(lobe);
    }
    const BSDF::Under under(bsdf, coat);
    substrate->shade(point, context, weight, bsdf);
}

void CoatingShader::bump(SurfacePoint& point) const {
    if (normal_map.isSet() || bump_height.isSet()) {
        PlainShader::bump(point);
    } else {
        substrate->bump(point);
    }
}

float CoatingShader::displacement(const SurfacePoint& point) const {
    return height.isSet() ? PlainShader::displacement(point) : substrate->displacement(point);
}

Coat ThinShader::coatOf(const Side& side, const SurfacePoint& point) const {
    Coat coat;
    coat.eta = ior;
    coat.fresnel_scale = std::max(0.0f, side.fresnel_scale.at(point));
    coat.average = std::min(1.0f, coat.fresnel_scale * average);
    return coat;
}

void ThinShader::shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
                       BSDF& bsdf) const {
    const Side& seen = context.front ? front : back;
    Coat near = coatOf(seen, point);
    near.far = false;
    Coat far = coatOf(context.front ? back : front, point);
    far.near = false;
    bsdf.add(glossyLobe(weight, seen.roughness.at(point), ior, near.fresnel_scale));
    const BSDF::Under under_near(bsdf, near);
    const BSDF::Under under_far(bsdf, far);
    const float sent_back = std::clamp(r_f.at(point), 0.0f, 1.0f);
    seen.shader->shade(point, context, weight * sent_back, bsdf);
    Lobe through;
    through.kind = Lobe::Kind::DIFFUSE_TRANSMIT;
    through.weight = weight * limited(transmittance.at(point)) * (1.0f - sent_back);
    bsdf.add(through);
}

int ThinShader::countLobes() const {
    return 2 + std::max(front.shader->countLobes(), back.shader->countLobes());
}

} // namespace engine
