// SPDX-License-Identifier: MIT
#include "engine/diffuse_shader.h"

#include "engine/random.h"

#include <algorithm>

namespace engine {

namespace {

RGB colourOfTriangle(Quenza::u64 triangle) {
    const Quenza::u64 bits = Random::scramble(triangle + 1);
    const auto part = [bits](int shift) { return 0.1f + 0.8f * float((bits >> shift) & 0xFF) / 255.0f; };
    return {part(0), part(8), part(16)};
}

} // namespace

void DiffuseShader::shade(const SurfacePoint& point, const ShadeContext&, const RGB& weight,
                          BSDF& bsdf) const {
    Lobe lobe;
    lobe.kind = kind;
    lobe.weight = weight * (random_colours ? colourOfTriangle(point.triangle) : limited(albedo.at(point)));
    lobe.roughness = std::max(0.0f, sigma.at(point));
    bsdf.add(lobe);
}

} // namespace engine
