// SPDX-License-Identifier: MIT
#pragma once

#include "engine/geometry.h"
#include "engine/layered_radiance.h"
#include "engine/photometry_ies.h"
#include "engine/surface_shader.h"
#include "engine/vec.h"

#include <memory>

namespace engine {

/// How one material emits on one instance.
class EmissionProfile {
public:
    /// Light that leaves the point in the direction `out`.
    LayeredRadiance emitted(const SurfacePoint& point, const Vec& out) const;

    float scale = 1;
    std::shared_ptr<const IESDistribution> distribution; ///< Null for light to all sides alike.
    Frame axes; ///< Of the distribution: it shines along the normal; horizontal angles start at the tangent.
    /// Density per square metre with which lamps are picked there, as a share of all lamps.
    float pick_density = 0;
    /// For a sphere: the share of all lamps.
    float pick_probability = 0;
};

/// Area, flux and intensity of a material's surface on an instance, at emission scale 1. A material that has
/// several of the mesh's indices is one.
struct EmitterMeasure {
    double area = 0;           ///< m^2
    double projected_area = 0; ///< The greatest over all directions that the surface is seen from.
    Vec mean_normal;           ///< The sum of the facets' normals, weighted by area.
    float front_luminance = 0; ///< cd/m^2, the mean over the surface.
    float back_luminance = 0;

    double flux() const;     ///< lm
    float luminance() const; ///< Of the brighter side.
};

EmitterMeasure measureEmitter(const Instance& instance, Quenza::u32 material);

} // namespace engine
