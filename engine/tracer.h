// SPDX-License-Identifier: MIT
#pragma once

#include "engine/background.h"
#include "engine/direct_light.h"
#include "engine/geometry.h"
#include "engine/lights.h"
#include "engine/path.h"
#include "engine/random.h"

#include <span>

namespace engine {

/// Follows paths of light from the camera: where they are scattered, lamps, background and sun are sampled
/// directly, and the path goes on by the surface's or the medium's own scattering; the two ways of finding a
/// light share it by the power heuristic.
class Tracer {
public:
    /// All three outlive the tracer. The camera stands at `camera`. Paths end after `max_depth` surfaces.
    Tracer(const Geometry& geometry, const Lights& lights, const Background& background, const Vec& camera,
           int max_depth);

    /// Adds the light that comes along `ray`, a camera's, times `weight`, to the sums of the layers.
    void trace(Ray ray, float weight, Random& random, std::span<RGB> layers) const;

private:
    void addSurround(const Path& path, std::span<RGB> layers) const;
    void addEmission(const Path& path, const SurfacePoint& point, float distance,
                     std::span<RGB> layers) const;
    enum class Way { ARRIVED, SCATTERED, ENDED };
    Way advance(Path& path, float distance, Random& random, std::span<RGB> layers) const;
    bool meet(Path& path, SurfacePoint& point, Random& random, std::span<RGB> layers) const;
    static bool scatter(Path& path, const SurfacePoint& point, const BSDF& bsdf, bool front, Random& random);
    static bool survives(Path& path, Random& random);

    const Geometry& geometry_;
    const Lights& lights_;
    const Background& background_;
    DirectLight direct_light_;
    MediumStack media_; ///< Around the camera.
    int max_depth_;
};

} // namespace engine
