// SPDX-License-Identifier: MIT
#include "engine/lights.h"

#include "engine/surface_point.h"
#include "scene/emission.h"
#include "scene/scene_node_material.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

using Quenza::EmissionScale;
using Quenza::Ref;
using Quenza::SceneNodeModel;
using Quenza::u32;
using Quenza::u64;

template <class Entry>
const Entry* entryFor(const Quenza::Vector<Ref<Entry>>& entries, const SceneNodeModel& model, u32 material) {
    if (material >= model.materials.size() || !model.materials[material]) {
        return nullptr;
    }
    for (const Ref<Entry>& entry : entries) {
        if (entry && entry->getMaterialUID() == model.materials[material]->getUID()) {
            return entry.getPointer();
        }
    }
    return nullptr;
}

/// What the radiance is multiplied by so that the measure has its value.
double scaleFor(const EmissionScale& scale, const EmitterMeasure& measure, const IESDistribution* ies) {
    const auto over = [&scale](double now) { return now > 0 ? scale.value / now : 1.0; };
    switch (scale.measure) {
    case EmissionScale::LUMINOUS_FLUX:
        return over(measure.flux());
    case EmissionScale::LUMINOUS_INTENSITY:
        // In the direction where it is greatest.
        return over(ies ? measure.flux() * double(ies->maximum())
                        : measure.projected_area * double(measure.luminance()));
    case EmissionScale::LUMINANCE:
        return over(double(measure.luminance()));
    case EmissionScale::LUMINOUS_EMITTANCE:
        return over(double(PI) * double(measure.front_luminance + measure.back_luminance));
    default:
        return 1.0;
    }
}

/// A flat lamp shines where its faces look; a closed one downwards in its own space.
Frame axesOf(const Instance& instance, const EmitterMeasure& measure) {
    const Affine place = instance.transform.at(0);
    const bool flat = double(length(measure.mean_normal)) > 0.01 * measure.area;
    Frame axes(normalise(flat ? measure.mean_normal : -place.z));
    const Vec along = place.x - axes.normal * dot(place.x, axes.normal);
    if (length(along) > 1e-3f * length(place.x)) {
        axes.tangent = normalise(along);
        axes.bitangent = cross(axes.normal, axes.tangent);
    }
    return axes;
}

struct SphereView {
    Vec axis;       ///< To the centre.
    float distance; ///< Likewise.
    float radius;
    float versine; ///< 1 - cos of the half angle; 2 from within.
};

SphereView viewOf(const Instance& sphere, const Vec& from, float time) {
    const Affine place = sphere.transform.at(time);
    const Vec way = place.origin - from;
    SphereView view{normalise(way), length(way), length(place.x), 2.0f};
    if (view.distance > view.radius) {
        const float ratio = view.radius / view.distance;
        const float sine2 = ratio * ratio;
        // Without the cancellation of 1 - cos.
        view.versine = sine2 / (1.0f + std::sqrt(1.0f - sine2));
    }
    return view;
}

} // namespace

void Lights::addInstance(Instance& instance, const SceneNodeModel* model, const ImageCache& files,
                         Notices& notices) {
    instance.emission.assign(instance.materials.size(), nullptr);
    for (u32 material = 0; material < instance.materials.size(); ++material) {
        LayeredRadiance front, back;
        instance.materials[material]->emitAverage(true, 1.0f, front);
        instance.materials[material]->emitAverage(false, 1.0f, back);
        if (front.empty() && back.empty()) {
            continue;
        }
        const EmitterMeasure measure = measureEmitter(instance, material);
        auto profile = std::make_unique<EmissionProfile>();
        if (const auto* const ies = model ? entryFor(model->ies_profiles, *model, material) : nullptr) {
            std::string fault;
            profile->distribution = IESDistribution::load(files.resolve(ies->path), fault);
            if (!profile->distribution) {
                notices.tell("The light distribution '" + ies->path.toStdString() + "' can't be read (" +
                             fault + "); the lamp shines to all sides.");
            }
            profile->axes = axesOf(instance, measure);
        }
        if (const auto* const scale = model ? entryFor(model->emission_scales, *model, material) : nullptr) {
            profile->scale = float(scaleFor(*scale, measure, profile->distribution.get()));
        }
        instance.emission[material] = profile.get();
        const float density = profile->scale * (measure.front_luminance + measure.back_luminance);
        profiles_.push_back(std::move(profile));
        addEmitters(instance, material, density);
    }
}

void Lights::addEmitters(const Instance& instance, u32 material, float flux_density) {
    EmissionProfile& profile = *profiles_.back();
    const Affine place = instance.transform.at(0);
    const Shape& shape = *instance.shape;
    if (!shape.mesh) {
        const float radius = length(place.x);
        emitters_.push_back({&instance, 0});
        profile.pick_probability = flux_density * 4 * PI * radius * radius;
        distribution_.add(double(profile.pick_probability));
        return;
    }
    profile.pick_density = flux_density;
    for (u64 i = 0; i < shape.countTriangles(); ++i) {
        const Shape::Corners t = shape.triangle(i);
        if (t.material != material) {
            continue;
        }
        const Vec a = shape.vertex(t.vertices[0]);
        const Vec normal = cross(place.vector(shape.vertex(t.vertices[1]) - a),
                                 place.vector(shape.vertex(t.vertices[2]) - a));
        emitters_.push_back({&instance, i});
        distribution_.add(double(flux_density) * 0.5 * double(length(normal)));
    }
}

void Lights::commit() {
    for (const auto& profile : profiles_) {
        const auto share = [this](float value) {
            return empty() ? 0.0f : float(double(value) / distribution_.total());
        };
        profile->pick_density = share(profile->pick_density);
        profile->pick_probability = share(profile->pick_probability);
    }
}

bool Lights::sample(const Vec& from, float time, Random& random, LightSample& sample) const {
    const Emitter& emitter = emitters_[distribution_.sample(random.next())];
    return emitter.instance->shape->mesh ? sampleTriangle(emitter, from, time, random, sample)
                                         : sampleSphere(emitter, from, time, random, sample);
}

bool Lights::sampleTriangle(const Emitter& emitter, const Vec& from, float time, Random& random,
                            LightSample& sample) const {
    const float root = std::sqrt(random.next());
    const float u = root * (1.0f - random.next());
    const float v = 1.0f - root;
    const SurfacePoint point =
        pointOnTriangle(*emitter.instance, emitter.triangle, u, v, emitter.instance->transform.at(time));
    const Vec way = point.position - from;
    const float distance = length(way);
    sample.direction = normalise(way);
    sample.infinite = false;
    const float cosine = std::abs(dot(point.normal, sample.direction));
    if (!(cosine > 0.0f) || !(distance > 0.0f)) {
        return false;
    }
    const EmissionProfile& profile = *emitter.instance->emission[point.material];
    sample.pdf = profile.pick_density * distance * distance / cosine;
    sample.radiance = profile.emitted(point, -sample.direction);
    sample.target = point.leave(-sample.direction);
    return !sample.radiance.empty();
}

bool Lights::sampleSphere(const Emitter& emitter, const Vec& from, float time, Random& random,
                          LightSample& sample) const {
    const Instance& instance = *emitter.instance;
    const SphereView view = viewOf(instance, from, time);
    const EmissionProfile& profile = *instance.emission[0];
    sample.direction = Frame(view.axis).toWorld(sampleCone(view.versine, random));
    sample.pdf = profile.pick_probability / (2 * PI * view.versine);
    // To the near side, from within to the far one.
    const float along = view.distance * dot(sample.direction, view.axis);
    const Vec nearest = from + sample.direction * along - (from + view.axis * view.distance);
    const float half = std::sqrt(std::max(0.0f, view.radius * view.radius - dot(nearest, nearest)));
    const bool outside = view.distance > view.radius;
    const float distance = outside ? along - half : along + half;
    sample.infinite = false;
    const Affine place = instance.transform.at(time);
    const Vec world = from + sample.direction * distance - place.origin;
    const SurfacePoint point =
        pointOnSphere(instance, {dot(world, place.x), dot(world, place.y), dot(world, place.z)}, place);
    sample.radiance = profile.emitted(point, -sample.direction);
    sample.target = point.leave(-sample.direction);
    return !sample.radiance.empty();
}

float Lights::pdf(const Vec& from, const Vec& direction, const SurfacePoint& hit, float distance,
                  float time) const {
    const EmissionProfile* const profile = hit.instance->emission[hit.material];
    if (!profile || empty()) {
        return 0.0f;
    }
    if (!hit.instance->shape->mesh) {
        return profile->pick_probability / (2 * PI * viewOf(*hit.instance, from, time).versine);
    }
    const float cosine = std::abs(dot(hit.normal, direction));
    return cosine > 0.0f ? profile->pick_density * distance * distance / cosine : 0.0f;
}

} // namespace engine
