// SPDX-License-Identifier: MIT
#pragma once

#include "engine/plain_shader.h"

namespace engine {

/// Matt reflection, or transmission.
class DiffuseShader : public PlainShader {
public:
    void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
               BSDF& bsdf) const override;
    const InternalMedium* medium() const override { return inside; }

    Lobe::Kind kind = Lobe::Kind::DIFFUSE; ///< Or OREN_NAYAR, or DIFFUSE_TRANSMIT.
    ColourInput albedo;
    ScalarInput sigma;
    bool random_colours = false; ///< Each triangle in a colour of its own.
    const InternalMedium* inside = nullptr;
};

} // namespace engine
