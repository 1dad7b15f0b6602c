// SPDX-License-Identifier: MIT
#include "engine/plain_shader.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

Vec onSideOf(const Vec& normal, const Vec& facet) {
    // Bumps that turn a normal through the facet would let the surface swallow all light there.
    return dot(normal, facet) > 0.01f ? normal : normalise(normal + facet * (0.02f - dot(normal, facet)));
}

} // namespace

Lobe glossyLobe(const RGB& weight, float roughness, float ior, float fresnel_scale) {
    Lobe lobe;
    lobe.kind = Lobe::Kind::GLOSSY;
    lobe.weight = weight;
    lobe.roughness = std::clamp(roughness, 0.001f, 1.0f);
    lobe.eta = ior;
    lobe.fresnel_scale = fresnel_scale;
    return lobe;
}

void PlainShader::emit(const SurfacePoint& point, bool front, float weight, LayeredRadiance& sum) const {
    if (emission.isSet() && (front || emits_back)) {
        const RGB radiance = emission.at(point) * emission_factor.at(point) * weight;
        if (!isBlack(radiance)) {
            sum.add(radiance, layer);
        }
    }
}

void PlainShader::emitAverage(bool front, float weight, LayeredRadiance& sum) const {
    if (emission.isSet() && (front || emits_back)) {
        const RGB radiance = emission.average() * emission_factor.average() * weight;
        if (!isBlack(radiance)) {
            sum.add(radiance, layer);
        }
    }
}

void PlainShader::bump(SurfacePoint& point) const {
    if (!normal_map.isSet() && bump_height.isConstant()) {
        return;
    }
    const float area = length(cross(point.dpdu, point.dpdv));
    if (!(area > 0.0f)) {
        return;
    }
    if (normal_map.isSet()) {
        const Vec turn = normal_map.at(point);
        const Vec n = normalise(point.dpdu) * turn.x + normalise(point.dpdv) * turn.y +
                      point.shading_normal * std::max(0.01f, turn.z);
        point.shading_normal = onSideOf(normalise(n), point.normal);
    }
    if (!bump_height.isConstant()) {
        // Blinn, "Simulation of Wrinkled Surfaces", 1978.
        const ScalarInput::Slope slope = bump_height.slopeAt(point);
        const Vec n = point.shading_normal;
        const float sign = dot(cross(point.dpdu, point.dpdv), n) < 0.0f ? -1.0f : 1.0f;
        const Vec turn = cross(n, point.dpdv) * slope.along_u - cross(n, point.dpdu) * slope.along_v;
        const Vec bumpy = normalise(n + turn * (sign / area));
        if (std::isfinite(dot(bumpy, bumpy))) {
            point.shading_normal = onSideOf(bumpy, point.normal);
        }
    }
}

} // namespace engine
