// SPDX-License-Identifier: MIT
#include "engine/emission_profile.h"

#include "engine/sampling.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace engine {

namespace {

using Quenza::u64;

/// Directions spread evenly over the sphere, along a spiral.
std::array<Vec, 128> evenDirections() {
    std::array<Vec, 128> directions;
    for (size_t i = 0; i < directions.size(); ++i) {
        const float z = 1.0f - 2.0f * (float(i) + 0.5f) / float(directions.size());
        const float across = std::sqrt(1.0f - z * z);
        const float angle = float(i) * PI * (3.0f - std::sqrt(5.0f));
        directions[i] = {across * std::cos(angle), across * std::sin(angle), z};
    }
    return directions;
}

/// The area of a sphere's outline, m^2.
double sphereDisc(const Instance& sphere) {
    const double radius = double(length(sphere.transform.at(0).x));
    return double(PI) * radius * radius;
}

/// Calls `visit` with each of the material's facets as a vector along its normal, as long as its area.
template <class Visit>
void forFacets(const Instance& instance, Quenza::u32 material, const Visit& visit) {
    const Affine place = instance.transform.at(0);
    const float half = place.determinant() < 0.0f ? -0.5f : 0.5f;
    const Shape& shape = *instance.shape;
    for (u64 i = 0; i < shape.countTriangles(); ++i) {
        const Shape::Corners t = shape.triangle(i);
        if (instance.shaderOf(t.material) != instance.materials[material]) {
            continue;
        }
        const Vec a = place.point(shape.vertex(t.vertices[0]));
        const Vec ab = place.point(shape.vertex(t.vertices[1])) - a;
        const Vec ac = place.point(shape.vertex(t.vertices[2])) - a;
        const Vec facet = cross(ab, ac) * half;
        if (std::isfinite(length(facet))) {
            visit(facet);
        }
    }
}

/// A direction at a time of the frame as it was, seen from the object, at the time 0. The maps of the two
/// times differ by a turn alone.
Vec turnedBack(const Vec& direction, const MotionTransform& transform, float time) {
    const Affine then = transform.at(0);
    const Affine now = transform.at(time);
    const Vec turned = cross(then.y, then.z) * dot(now.x, direction) +
                       cross(then.z, then.x) * dot(now.y, direction) +
                       cross(then.x, then.y) * dot(now.z, direction);
    return normalise(then.determinant() < 0.0f ? -turned : turned);
}

} // namespace

LayeredRadiance EmissionProfile::emitted(const SurfacePoint& point, const Vec& out, float time) const {
    LayeredRadiance sum;
    const float cosine = dot(point.normal, out);
    point.shader().emit(point, cosine > 0.0f, scale, sum);
    if (distribution && !sum.empty()) {
        // The distribution gives intensities, so that a flat surface's own cosine goes out. What is seen at a
        // grazing angle would be infinitely bright.
        const float seen = flat ? std::max(0.001f, std::abs(cosine)) : 1.0f;
        sum.scale(PI * concentration * intensityShare(out, point.instance->transform, time) / seen);
    }
    return sum;
}

float EmissionProfile::intensityShare(const Vec& out, const MotionTransform& transform, float time) const {
    const Vec local = axes.toLocal(transform.moves() ? turnedBack(out, transform, time) : out);
    return distribution->at(std::acos(std::clamp(local.z, -1.0f, 1.0f)), std::atan2(local.y, local.x));
}

bool EmitterMeasure::isFlat() const {
    return double(length(mean_normal)) > 0.99 * area;
}

double EmitterMeasure::flux() const {
    return double(PI) * area * (double(front_luminance) + double(back_luminance));
}

float EmitterMeasure::luminance() const {
    return std::max(front_luminance, back_luminance);
}

EmitterMeasure measureEmitter(const Instance& instance, Quenza::u32 material) {
    EmitterMeasure measure;
    if (instance.shape->mesh) {
        forFacets(instance, material, [&measure](const Vec& facet) {
            measure.area += double(length(facet));
            measure.mean_normal += facet;
        });
    } else {
        measure.area = 4 * sphereDisc(instance);
    }
    LayeredRadiance front, back;
    instance.materials[material]->emitAverage(true, 1.0f, front);
    instance.materials[material]->emitAverage(false, 1.0f, back);
    measure.front_luminance = engine::luminance(front.total());
    measure.back_luminance = engine::luminance(back.total());
    return measure;
}

double projectedArea(const Instance& instance, Quenza::u32 material) {
    if (!instance.shape->mesh) {
        return sphereDisc(instance);
    }
    static const std::array<Vec, 128> DIRECTIONS = evenDirections();
    std::array<double, 128> seen{};
    Vec mean_normal;
    forFacets(instance, material, [&](const Vec& facet) {
        mean_normal += facet;
        for (size_t k = 0; k < DIRECTIONS.size(); ++k) {
            seen[k] += double(std::max(0.0f, dot(facet, DIRECTIONS[k])));
        }
    });
    return std::max(double(length(mean_normal)), *std::max_element(seen.begin(), seen.end()));
}

float concentrationAlong(const Vec& axis, const Instance& instance, Quenza::u32 material,
                         const EmitterMeasure& measure) {
    double seen = 0;
    forFacets(instance, material, [&](const Vec& facet) {
        const double projected = double(dot(facet, axis));
        seen +=
            std::abs(projected) * double(projected > 0 ? measure.front_luminance : measure.back_luminance);
    });
    const double all = measure.area * (double(measure.front_luminance) + double(measure.back_luminance));
    return seen > 0 ? float(all / seen) : 1.0f;
}

} // namespace engine
