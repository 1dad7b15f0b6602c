// SPDX-License-Identifier: MIT
#pragma once

#include "engine/background.h"
#include "engine/geometry.h"
#include "engine/lights.h"
#include "engine/medium_stack.h"
#include "engine/path.h"
#include "engine/random.h"

#include <span>

namespace engine {

/// Light that comes straight from lamps, surroundings and sun to where a path is scattered.
class DirectLight {
public:
    /// All three outlive it.
    DirectLight(const Geometry& geometry, const Lights& lights, const Background& background);

    /// Adds one sample of each to the sums of the layers, weighted against the chance that the path runs into
    /// that light by itself.
    void add(const Path& path, const Vertex& vertex, Random& random, std::span<RGB> layers) const;
    /// Share of the light on a white surface at the point that is left by what stands in its way.
    RGB shadowOn(const Path& path, const SurfacePoint& point, Random& random) const;

private:
    template <class Use>
    void sample(const Path& path, const Vec& from, Random& random, const Use& use) const;
    RGB seen(const Path& path, const Vertex& vertex, const LightSample& sample) const;
    RGB throughSurfaces(Ray ray, const Path& path) const;

    const Geometry& geometry_;
    const Lights& lights_;
    const Background& background_;
    bool surfaces_pass_ = false; ///< Some let light straight through.
};

} // namespace engine
