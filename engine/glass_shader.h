// SPDX-License-Identifier: MIT
#pragma once

#include "engine/plain_shader.h"

namespace engine {

/// The surface of a medium, smooth or rough; or a mirror.
class GlassShader : public PlainShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    RGB passing(const SurfacePoint& point, const ShadeContext& context) const override;
    bool mayPass() const override;
    const InternalMedium* medium() const override { return transparent ? inside : nullptr; }

    bool transparent = true; ///< Else a mirror.
    bool rough = false;
    ScalarInput exponent;
    ColourInput layer_transmittance;
    const InternalMedium* inside = nullptr;
};

} // namespace engine
