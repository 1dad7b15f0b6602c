// SPDX-License-Identifier: MIT
#pragma once

#include "engine/emission_profile.h"
#include "engine/geometry.h"
#include "engine/layered_radiance.h"
#include "engine/notices.h"
#include "engine/random.h"
#include "engine/sampling.h"
#include "engine/texture_map.h"
#include "scene/scene_node_model.h"

#include <memory>
#include <vector>

namespace engine {

/// Light that reaches a point from a direction that was drawn at random.
struct LightSample {
    Vec direction;
    bool infinite = false; ///< From the background.
    Vec target;            ///< Else where it comes from, a little before the lamp's surface.
    float pdf = 0;         ///< Per steradian.
    LayeredRadiance radiance;
};

/// All surfaces that emit, to draw from by their flux.
class Lights {
public:
    /// Gives the instance the profiles of those of its materials that emit. `model` may be null: no scales
    /// and no distributions then.
    void addInstance(Instance& instance, const Quenza::SceneNodeModel* model, const ImageCache& files,
                     Notices& notices);
    /// To be called once all instances are there.
    void commit();

    bool empty() const { return !distribution_.canSample(); }
    /// False when the drawn place sends no light to `from`.
    bool sample(const Vec& from, float time, Random& random, LightSample& sample) const;
    /// The density with which sample() takes `hit`, a point of an emitting surface that lies `distance`
    /// behind `from` in the direction `direction`.
    float pdf(const Vec& from, const Vec& direction, const SurfacePoint& hit, float distance,
              float time) const;

private:
    struct Emitter {
        const Instance* instance;
        Quenza::u64 triangle;
    };
    bool sampleTriangle(const Emitter& emitter, const Vec& from, float time, Random& random,
                        LightSample& sample) const;
    bool sampleSphere(const Emitter& emitter, const Vec& from, float time, Random& random,
                      LightSample& sample) const;
    void addEmitters(const Instance& instance, Quenza::u32 material, float flux_density);

    std::vector<std::unique_ptr<EmissionProfile>> profiles_;
    std::vector<Emitter> emitters_;
    Distribution distribution_;
};

} // namespace engine
