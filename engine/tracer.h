// SPDX-License-Identifier: MIT
#pragma once

#include "engine/background.h"
#include "engine/geometry.h"
#include "engine/lights.h"
#include "engine/medium_stack.h"
#include "engine/random.h"

#include <span>

namespace engine {

/// Follows paths of light from the camera: at each surface lamps, background and sun are sampled directly,
/// and the path goes on by the surface's own scattering; the two ways of finding a light share it by the
/// power heuristic.
class Tracer {
public:
    /// All three outlive the tracer. Paths end after `max_depth` surfaces.
    Tracer(const Geometry& geometry, const Lights& lights, const Background& background, int max_depth);

    /// Adds the light that comes along `ray`, a camera's, times `weight`, to the sums of the layers.
    void trace(Ray ray, float weight, Random& random, std::span<RGB> layers) const;

private:
    struct Path;

    void addSurround(const Path& path, std::span<RGB> layers) const;
    void addEmission(const Path& path, const SurfacePoint& point, float distance,
                     std::span<RGB> layers) const;
    void addDirect(const Path& path, const SurfacePoint& point, const BSDF& bsdf, Random& random,
                   std::span<RGB> layers) const;
    void addLight(const Path& path, const SurfacePoint& point, const BSDF& bsdf, const LightSample& sample,
                  std::span<RGB> layers) const;
    RGB transmittance(Ray ray, const InternalMedium* medium) const;
    bool scatter(Path& path, const SurfacePoint& point, const BSDF& bsdf, bool front, Random& random) const;
    bool survives(Path& path, Random& random) const;

    const Geometry& geometry_;
    const Lights& lights_;
    const Background& background_;
    int max_depth_;
    bool surfaces_pass_ = false; ///< Some let light straight through.
};

} // namespace engine
