// SPDX-License-Identifier: MIT
#pragma once

#include "engine/bsdf.h"
#include "engine/geometry.h"
#include "engine/layered_radiance.h"
#include "engine/medium_stack.h"

namespace engine {

/// What a surface is seen with.
struct ShadeContext {
    bool front = true; ///< Seen from the side of the facet's normal.
    float eta = 1;     ///< Of a boundary of a medium: index behind it over index before it.
};

/// A material of the scene as the tracer asks it.
class SurfaceShader {
public:
    virtual ~SurfaceShader() = default;

    /// Adds how the surface scatters light, times `weight`.
    virtual void shade(const SurfacePoint& point, const ShadeContext& context, const RGB& weight,
                       BSDF& bsdf) const = 0;
    /// Adds what one side emits, times `weight`.
    virtual void emit(const SurfacePoint&, bool /*front*/, float /*weight*/, LayeredRadiance&) const {}
    /// Adds the mean of what one side emits.
    virtual void emitAverage(bool /*front*/, float /*weight*/, LayeredRadiance&) const {}
    /// Share of the light that goes straight on, as if nothing was there.
    virtual RGB passing(const SurfacePoint&, const ShadeContext&) const { return RGB{0.0f}; }
    /// passing() may be other than black.
    virtual bool mayPass() const { return false; }
    /// The medium behind the front side; null for none.
    virtual const InternalMedium* medium() const { return nullptr; }
    /// The most lobes that shade() adds. More than a BSDF takes can't be drawn.
    virtual int countLobes() const { return 1; }
    /// Turns the point's shading normal as bumps of the surface do.
    virtual void bump(SurfacePoint&) const {}
    /// How far the surface itself is moved along its normal, in metres.
    virtual float displacement(const SurfacePoint&) const { return 0.0f; }
    virtual bool isDisplaced() const { return false; }

    /// The surface is seen only by the shadows that fall on it.
    bool catches_shadows = false;
};

} // namespace engine
