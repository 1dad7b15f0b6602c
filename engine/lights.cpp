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
double scaleFor(const EmissionScale& scale, const Instance& instance, u32 material,
                const EmitterMeasure& measure, const IESDistribution* ies) {
    const auto over = [&scale](double now) { return now > 0 ? scale.value / now : 1.0; };
    switch (scale.measure) {
    case EmissionScale::LUMINOUS_FLUX:
        return over(measure.flux());
    case EmissionScale::LUMINOUS_INTENSITY:
        // In the direction where it is greatest.
        return over(ies ? measure.flux() * double(ies->maximum())
                        : projectedArea(instance, material) * double(measure.luminance()));
    case EmissionScale::LUMINANCE:
        return over(double(measure.luminance()));
    case EmissionScale::LUMINOUS_EMITTANCE:
        return over(double(PI) * double(measure.front_luminance + measure.back_luminance));
    default:
        return 1.0;
    }
}

/// An open lamp shines where its faces look; a closed one downwards in its own space.
Frame axesOf(const Instance& instance, const EmitterMeasure& measure) {
    const Affine place = instance.transform.at(0);
    const bool open = double(length(measure.mean_normal)) > 0.01 * measure.area;
    Frame axes(normalise(open ? measure.mean_normal : -place.z));
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
            profile->flat = measure.isFlat();
            profile->concentration = concentrationAlong(profile->axes.normal, instance, material, measure);
        }
        if (const auto* const scale = model ? entryFor(model->emission_scales, *model, material) : nullptr) {
            profile->scale =
                float(scaleFor(*scale, instance, material, measure, profile->distribution.get()));
        }
        instance.emission[material] = profile.get();
        addLamp(instance, material, *profile,
                profile->scale * (measure.front_luminance + measure.back_luminance));
        profiles_.push_back(std::move(profile));
    }
}

void Lights::addLamp(Instance& instance, u32 material, EmissionProfile& profile, float flux_density) {
    Lamp lamp{&instance, &profile, 0, {}, 0, {}, {}};
    double area = 0;
    if (instance.shape->mesh) {
        addTriangles(lamp, material);
        area = lamp.areas.total();
    } else {
        lamp.radius = length(instance.transform.at(0).x);
        area = 4 * double(PI) * double(lamp.radius) * double(lamp.radius);
    }
    lamp.flux = float(double(flux_density) * area);
    // What isn't drawn is still seen, and met by chance.
    if (lamp.flux > 0 && std::isfinite(lamp.flux)) {
        profile.lamp = u32(lamps_.size());
        by_flux_.add(double(lamp.flux));
        lamps_.push_back(std::move(lamp));
    }
}

void Lights::addTriangles(Lamp& lamp, u32 material) {
    const Affine place = lamp.instance->transform.at(0);
    const Shape& shape = *lamp.instance->shape;
    Vec low{INFINITY, INFINITY, INFINITY};
    Vec high = -low;
    for (u64 i = 0; i < shape.countTriangles(); ++i) {
        const Shape::Corners t = shape.triangle(i);
        if (lamp.instance->shaderIndex(t.material) != material) {
            continue;
        }
        const Vec a = shape.vertex(t.vertices[0]);
        const Vec b = shape.vertex(t.vertices[1]);
        const Vec c = shape.vertex(t.vertices[2]);
        const double area = 0.5 * double(length(cross(place.vector(b - a), place.vector(c - a))));
        if (!(area > 0) || !std::isfinite(area)) {
            continue;
        }
        lamp.triangles.push_back(i);
        lamp.areas.add(area);
        for (const Vec& v : {a, b, c}) {
            low = {std::min(low.x, v.x), std::min(low.y, v.y), std::min(low.z, v.z)};
            high = {std::max(high.x, v.x), std::max(high.y, v.y), std::max(high.z, v.z)};
        }
    }
    lamp.centre = (low + high) * 0.5f;
    const Vec half = (high - low) * 0.5f;
    for (const Vec& diagonal :
         {half, Vec{half.x, half.y, -half.z}, Vec{half.x, -half.y, half.z}, Vec{-half.x, half.y, half.z}}) {
        lamp.radius = std::max(lamp.radius, length(place.vector(diagonal)));
    }
}

float Lights::weigh(const Vec& from, float time, Weights& weights) const {
    float sum = 0;
    for (u64 i = 0; i < lamps_.size(); ++i) {
        const Lamp& lamp = lamps_[i];
        const Vec way = lamp.instance->transform.at(time).point(lamp.centre) - from;
        const float distance2 = std::max(dot(way, way), lamp.radius * lamp.radius);
        weights[i] = lamp.flux / std::max(distance2, 1e-12f);
        if (lamp.profile->distribution) {
            // A spot sends most of its light elsewhere. Near a large one the directions differ, so that the
            // floor is not small.
            weights[i] *=
                0.2f + 4 * PI * lamp.profile->intensityShare(-normalise(way), lamp.instance->transform, time);
        }
        sum += weights[i];
    }
    return sum;
}

bool Lights::sample(const Vec& from, float time, Random& random, LightSample& sample) const {
    u64 index = 0;
    float probability = 1;
    if (lamps_.size() > MAX_WEIGHED) {
        index = by_flux_.sample(random.next());
        probability = float(by_flux_.probability(index));
    } else {
        Weights weights;
        const float sum = weigh(from, time, weights);
        float u = random.next() * sum;
        while (index + 1 < lamps_.size() && u >= weights[index]) {
            u -= weights[index++];
        }
        probability = weights[index] / sum;
    }
    const Lamp& lamp = lamps_[index];
    const bool lit = lamp.triangles.empty() ? sampleSphere(lamp, from, time, random, sample)
                                            : sampleTriangle(lamp, from, time, random, sample);
    sample.pdf *= probability;
    return lit;
}

bool Lights::sampleTriangle(const Lamp& lamp, const Vec& from, float time, Random& random,
                            LightSample& sample) {
    const u64 triangle = lamp.triangles[lamp.areas.sample(random.next())];
    const float root = std::sqrt(random.next());
    const float u = root * (1.0f - random.next());
    const float v = 1.0f - root;
    const SurfacePoint point =
        pointOnTriangle(*lamp.instance, triangle, u, v, lamp.instance->transform.at(time));
    const Vec way = point.position - from;
    const float distance = length(way);
    sample.direction = normalise(way);
    sample.infinite = false;
    const float cosine = std::abs(dot(point.normal, sample.direction));
    if (!(cosine > 0.0f) || !(distance > 0.0f)) {
        return false;
    }
    sample.pdf = distance * distance / (cosine * float(lamp.areas.total()));
    sample.radiance = lamp.profile->emitted(point, -sample.direction, time);
    sample.target = point.leave(-sample.direction);
    return !sample.radiance.empty();
}

bool Lights::sampleSphere(const Lamp& lamp, const Vec& from, float time, Random& random,
                          LightSample& sample) {
    const Instance& instance = *lamp.instance;
    const SphereView view = viewOf(instance, from, time);
    sample.direction = Frame(view.axis).toWorld(sampleCone(view.versine, random));
    sample.pdf = 1.0f / (2 * PI * view.versine);
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
    sample.radiance = lamp.profile->emitted(point, -sample.direction, time);
    sample.target = point.leave(-sample.direction);
    return !sample.radiance.empty();
}

float Lights::pdf(const Vec& from, const Vec& direction, const SurfacePoint& hit, float distance,
                  float time) const {
    const EmissionProfile* const profile = hit.instance->emission[hit.material];
    if (!profile || profile->lamp == EmissionProfile::NO_LAMP) {
        return 0.0f;
    }
    const Lamp& lamp = lamps_[profile->lamp];
    float probability = 1;
    if (lamps_.size() > MAX_WEIGHED) {
        probability = float(by_flux_.probability(profile->lamp));
    } else if (lamps_.size() > 1) {
        Weights weights;
        const float sum = weigh(from, time, weights);
        probability = weights[profile->lamp] / sum;
    }
    if (lamp.triangles.empty()) {
        return probability / (2 * PI * viewOf(*hit.instance, from, time).versine);
    }
    const float cosine = std::abs(dot(hit.normal, direction));
    return cosine > 0.0f ? probability * distance * distance / (cosine * float(lamp.areas.total())) : 0.0f;
}

} // namespace engine
