// SPDX-License-Identifier: MIT
#pragma once

#include "engine/geometry.h"
#include "engine/layered_radiance.h"
#include "engine/photometry_ies.h"
#include "engine/surface_shader.h"
#include "engine/transform.h"
#include "engine/vec.h"

#include <memory>

namespace engine {

/// How one material emits on one instance.
class EmissionProfile {
public:
    /// Light that leaves the point in the direction `out` at a time of the frame.
    LayeredRadiance emitted(const SurfacePoint& point, const Vec& out, float time) const;
    /// With a distribution: intensity in the direction over the flux, 1/sr.
    float intensityShare(const Vec& out, const MotionTransform& transform, float time) const;

    float scale = 1;
    std::shared_ptr<const IESDistribution> distribution; ///< Null for light to all sides alike.
    Frame axes; ///< Of the distribution: it shines along the normal; horizontal angles start at the tangent.
                ///< As it stands at the time 0.
    /// With a distribution: all that shines over its projection along the axis, so that the light on the axis
    /// is that of the whole flux.
    float concentration = 1;
    bool flat = true; ///< With a distribution: the surface's own cosine is taken out.
    static constexpr Quenza::u32 NO_LAMP = 0xFFFFFFFFu;
    Quenza::u32 lamp = NO_LAMP; ///< Index among the lamps; NO_LAMP for what is too weak or small to be drawn.
};

/// Area and flux of a material's surface on an instance, at emission scale 1. A material that has
/// several of the mesh's indices is one.
struct EmitterMeasure {
    double area = 0;           ///< m^2
    Vec mean_normal;           ///< The sum of the facets' normals, weighted by area.
    float front_luminance = 0; ///< cd/m^2, the mean over the surface.
    float back_luminance = 0;

    bool isFlat() const;
    double flux() const;     ///< lm
    float luminance() const; ///< Of the brighter side.
};

EmitterMeasure measureEmitter(const Instance& instance, Quenza::u32 material);

/// In m^2, the greatest over all directions that the material's surface is seen from. Apart from the rest
/// because it takes long.
double projectedArea(const Instance& instance, Quenza::u32 material);

/// EmissionProfile::concentration for a distribution along `axis`.
float concentrationAlong(const Vec& axis, const Instance& instance, Quenza::u32 material,
                         const EmitterMeasure& measure);

} // namespace engine
