// SPDX-License-Identifier: MIT
#pragma once

#include "engine/layered_radiance.h"
#include "engine/lights.h"
#include "engine/material_compiler.h"
#include "engine/sampling.h"
#include "engine/sky.h"
#include "scene/scene_node_background_settings.h"

#include <optional>

namespace engine {

/// What surrounds the scene, infinitely far away: sun and sky, or a material that emits.
class Background {
public:
    /// `settings` may be null: all is black then. But a scene that has nothing that is meant to shine, be it
    /// in the background or among `materials`, would show nothing at all: it gets an even white sky, of which
    /// the user is told.
    Background(const Quenza::SceneNodeBackgroundSettings* settings, MaterialCompiler& materials,
               Notices& notices);

    /// Of the sky or the material, without the sun.
    LayeredRadiance surround(const Vec& direction) const;
    /// Of the sun's disc.
    LayeredRadiance sun(const Vec& direction) const;

    bool hasSurround() const { return cells_.canSample(); }
    bool hasSun() const { return sun_sky_ && sun_sky_->hasSun(); }
    void sampleSurround(Random& random, LightSample& sample) const;
    float surroundPdf(const Vec& direction) const;
    void sampleSun(Random& random, LightSample& sample) const;
    /// Zero beside the disc.
    float sunPdf(const Vec& direction) const;

private:
    float scaleOf(const Quenza::EmissionScale& scale) const;
    void tabulate();

    std::optional<SunSky> sun_sky_;
    const SurfaceShader* shader_ = nullptr;
    float scale_ = 1;
    RGB plain_{0.0f}; ///< Without a material.
    /// Brightness over a grid of equal areas: columns of longitude, rows of height.
    Distribution cells_;
};

} // namespace engine
