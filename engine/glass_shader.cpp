// SPDX-License-Identifier: MIT
#include "engine/glass_shader.h"

#include "engine/microfacet.h"

#include <cmath>

namespace engine {

namespace {

/// There is nothing to see at a boundary of equal indices.
bool isMatched(float eta) {
    return std::abs(eta - 1.0f) < 1e-4f;
}

} // namespace

void GlassShader::shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
                        BSDF& bsdf) const {
    Lobe lobe;
    lobe.weight = weight;
    lobe.eta = context.eta;
    lobe.transmittance = limited(layer_transmittance.at(point));
    if (!transparent) {
        lobe.kind = Lobe::Kind::MIRROR;
        lobe.weight = weight * lobe.transmittance;
    } else if (isMatched(context.eta)) {
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

bool GlassShader::mayPass() const {
    return transparent && (!inside || (isMatched(inside->ior) && !inside->disperses()));
}

RGB GlassShader::passing(const SurfacePoint& point, const ShadeContext& context) const {
    return transparent && isMatched(context.eta) ? limited(layer_transmittance.at(point)) : RGB{0.0f};
}

} // namespace engine
