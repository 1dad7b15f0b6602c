// SPDX-License-Identifier: MIT
#include "engine/phong_shader.h"

#include "engine/microfacet.h"

#include <algorithm>

namespace engine {

void PhongShader::shade(const SurfacePoint& point, const ShadeContext&, const RGB& weight, BSDF& bsdf) const {
    const float roughness = roughnessOfExponent(exponent.at(point));
    if (metal) {
        Lobe lobe;
        lobe.kind = Lobe::Kind::METAL;
        lobe.weight = measured ? weight : weight * limited(colour.at(point));
        lobe.curve = measured ? &*measured : nullptr;
        lobe.roughness = roughness;
        bsdf.add(lobe);
        return;
    }
    Coat coat;
    coat.eta = ior;
    coat.fresnel_scale = std::max(0.0f, fresnel_scale.at(point));
    coat.average = std::min(1.0f, coat.fresnel_scale * average);
    bsdf.add(glossyLobe(weight, roughness, ior, coat.fresnel_scale));
    const BSDF::Under under(bsdf, coat);
    Lobe ground;
    ground.weight = weight * limited(colour.at(point));
    bsdf.add(ground);
}

} // namespace engine
