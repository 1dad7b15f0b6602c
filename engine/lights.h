// SPDX-License-Identifier: MIT
#pragma once

#include "engine/emission_profile.h"
#include "engine/geometry.h"
#include "engine/image_cache.h"
#include "engine/layered_radiance.h"
#include "engine/notices.h"
#include "engine/random.h"
#include "engine/sampling.h"
#include "scene/scene_node_model.h"

#include <array>
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

/// All surfaces that emit. A lamp is one material on one instance; it is drawn by what it may send to the
/// point: its flux over the squared distance. Within a lamp places are drawn evenly by area.
class Lights {
public:
    /// Gives the instance the profiles of those of its materials that emit. `model` may be null: no scales
    /// and no distributions then.
    void addInstance(Instance& instance, const Quenza::SceneNodeModel* model, const ImageCache& files,
                     Notices& notices);

    bool empty() const { return !by_flux_.canSample(); }
    /// False when the drawn place sends no light to `from`.
    bool sample(const Vec& from, float time, Random& random, LightSample& sample) const;
    /// The density with which sample() takes `hit`, a point of an emitting surface that lies `distance`
    /// behind `from` in the direction `direction`.
    float pdf(const Vec& from, const Vec& direction, const SurfacePoint& hit, float distance,
              float time) const;

    /// With more lamps than that the distance is not looked at.
    static constexpr Quenza::u64 MAX_WEIGHED = 64;

private:
    struct Lamp {
        const Instance* instance;
        const EmissionProfile* profile;
        float flux;
        Vec centre;                         ///< In the instance's space.
        float radius = 0;                   ///< About it, in metres.
        std::vector<Quenza::u64> triangles; ///< Empty for a sphere.
        Distribution areas;                 ///< Of the triangles, in square metres.
    };
    using Weights = std::array<float, MAX_WEIGHED>;

    void addLamp(Instance& instance, Quenza::u32 material, EmissionProfile& profile, float flux_density);
    static void addTriangles(Lamp& lamp, Quenza::u32 material);
    /// How likely each lamp is to be drawn, times the result.
    float weigh(const Vec& from, float time, Weights& weights) const;
    static bool sampleTriangle(const Lamp& lamp, const Vec& from, float time, Random& random,
                               LightSample& sample);
    static bool sampleSphere(const Lamp& lamp, const Vec& from, float time, Random& random,
                             LightSample& sample);

    std::vector<std::unique_ptr<EmissionProfile>> profiles_;
    std::vector<Lamp> lamps_;
    Distribution by_flux_;
};

} // namespace engine
