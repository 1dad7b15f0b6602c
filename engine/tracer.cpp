// SPDX-License-Identifier: MIT
#include "engine/tracer.h"

#include "engine/bsdf.h"
#include "engine/sampling.h"
#include "engine/surface_shader.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

/// Surfaces that a path passes, those without an effect too.
constexpr int MAX_EVENTS = 20000;
/// From that many surfaces on paths end at random, the weaker the more likely.
constexpr int ROULETTE_DEPTH = 4;
constexpr float MAX_SURVIVAL = 0.97f;

RGB absorbed(const InternalMedium* medium, float distance) {
    if (!medium || !std::isfinite(distance)) {
        return RGB{1.0f};
    }
    const RGB& a = medium->absorption;
    return {std::exp(-a.r * distance), std::exp(-a.g * distance), std::exp(-a.b * distance)};
}

} // namespace

struct Tracer::Path {
    Ray ray;
    RGB throughput{1.0f};
    MediumStack media;
    Vec from;             ///< The last surface that scattered the path.
    float pdf = INFINITY; ///< Density of the direction that it took there; infinite for the camera's.
    int depth = 0;
    bool from_camera = true;
};

Tracer::Tracer(const Geometry& geometry, const Lights& lights, const Background& background, int max_depth)
    : geometry_(geometry), lights_(lights), background_(background), max_depth_(max_depth) {
    for (const auto& instance : geometry.instances()) {
        for (const SurfaceShader* shader : instance->materials) {
            surfaces_pass_ = surfaces_pass_ || shader->mayPass();
        }
    }
}

void Tracer::trace(Ray ray, float weight, Random& random, std::span<RGB> layers) const {
    Path path;
    path.ray = ray;
    path.throughput = RGB{weight};
    path.from = ray.origin;
    for (int event = 0; event < MAX_EVENTS; ++event) {
        Hit hit;
        if (!geometry_.intersect(path.ray, hit, path.from_camera)) {
            addSurround(path, layers);
            return;
        }
        path.throughput *= absorbed(path.media.current(), hit.distance);
        SurfacePoint point = geometry_.surfaceAt(path.ray, hit);
        const SurfaceShader& shader = point.shader();
        shader.bump(point);
        const Vec out = -path.ray.direction;
        ShadeContext context;
        context.front = dot(out, point.normal) > 0.0f;
        addEmission(path, point, length(point.position - path.from), layers);

        const Interface interface = interfaceOf(path.media, shader.medium(), context.front);
        context.eta = interface.eta;
        BSDF bsdf(point, out);
        if (interface.real) {
            shader.shade(point, context, RGB{1.0f}, bsdf);
        } else {
            Lobe pass;
            pass.kind = Lobe::Kind::PASS;
            bsdf.add(pass);
        }
        if (bsdf.empty() || path.depth >= max_depth_) {
            return;
        }
        if (bsdf.hasSmooth()) {
            addDirect(path, point, bsdf, random, layers);
        }
        if (!scatter(path, point, bsdf, context.front, random) || !survives(path, random)) {
            return;
        }
    }
}

bool Tracer::scatter(Path& path, const SurfacePoint& point, const BSDF& bsdf, bool front,
                     Random& random) const {
    BSDF::Sample sample;
    if (!bsdf.sample(random, sample)) {
        return false;
    }
    path.throughput *= sample.weight;
    path.ray.origin = point.leave(sample.in);
    path.ray.direction = sample.in;
    path.ray.near = 0;
    if (sample.transmitted) {
        if (const InternalMedium* const medium = point.shader().medium()) {
            front ? path.media.enter(medium) : path.media.leave(medium);
        }
    }
    if (!sample.passed) {
        path.from = point.position;
        path.pdf = sample.pdf;
        path.from_camera = false;
        ++path.depth;
    }
    return true;
}

bool Tracer::survives(Path& path, Random& random) const {
    const float strength = maxComponent(path.throughput);
    if (!(strength > 0.0f) || !std::isfinite(strength)) {
        return false;
    }
    if (path.depth < ROULETTE_DEPTH) {
        return true;
    }
    const float chance = std::min(MAX_SURVIVAL, strength);
    if (random.next() >= chance) {
        return false;
    }
    path.throughput /= chance;
    return true;
}

void Tracer::addSurround(const Path& path, std::span<RGB> layers) const {
    const Vec& direction = path.ray.direction;
    const bool sampled = std::isfinite(path.pdf);
    const float surround =
        sampled && background_.hasSurround() ? misWeight(path.pdf, background_.surroundPdf(direction)) : 1.0f;
    background_.surround(direction).addTo(layers, path.throughput * surround);
    if (background_.hasSun()) {
        const float sun = sampled ? misWeight(path.pdf, background_.sunPdf(direction)) : 1.0f;
        background_.sun(direction).addTo(layers, path.throughput * sun);
    }
}

void Tracer::addEmission(const Path& path, const SurfacePoint& point, float distance,
                         std::span<RGB> layers) const {
    const EmissionProfile* const profile = point.instance->emission[point.material];
    if (!profile) {
        return;
    }
    float weight = 1.0f;
    if (std::isfinite(path.pdf)) {
        weight =
            misWeight(path.pdf, lights_.pdf(path.from, path.ray.direction, point, distance, path.ray.time));
    }
    profile->emitted(point, -path.ray.direction).addTo(layers, path.throughput * weight);
}

void Tracer::addDirect(const Path& path, const SurfacePoint& point, const BSDF& bsdf, Random& random,
                       std::span<RGB> layers) const {
    LightSample sample;
    if (!lights_.empty() && lights_.sample(point.position, path.ray.time, random, sample)) {
        addLight(path, point, bsdf, sample, layers);
    }
    if (background_.hasSurround()) {
        background_.sampleSurround(random, sample);
        addLight(path, point, bsdf, sample, layers);
    }
    if (background_.hasSun()) {
        background_.sampleSun(random, sample);
        addLight(path, point, bsdf, sample, layers);
    }
}

void Tracer::addLight(const Path& path, const SurfacePoint& point, const BSDF& bsdf,
                      const LightSample& sample, std::span<RGB> layers) const {
    float pdf = 0;
    const RGB scattered = bsdf.evaluate(sample.direction, pdf);
    if (isBlack(scattered) || !(sample.pdf > 0.0f)) {
        return;
    }
    Ray shadow;
    shadow.origin = point.leave(sample.direction);
    shadow.direction = sample.direction;
    if (!sample.infinite) {
        // Both ends keep off their surfaces, which turns the way between them by a trifle.
        const Vec way = sample.target - shadow.origin;
        shadow.far = length(way);
        shadow.direction = normalise(way);
    }
    shadow.time = path.ray.time;
    const RGB seen = transmittance(shadow, path.media.current());
    if (!isBlack(seen)) {
        sample.radiance.addTo(layers,
                              path.throughput * scattered * seen * (misWeight(sample.pdf, pdf) / sample.pdf));
    }
}

RGB Tracer::transmittance(Ray ray, const InternalMedium* medium) const {
    if (!surfaces_pass_) {
        return geometry_.occluded(ray) ? RGB{0.0f} : absorbed(medium, ray.far);
    }
    RGB seen = absorbed(medium, ray.far);
    for (int event = 0; event < MAX_EVENTS; ++event) {
        Hit hit;
        if (!geometry_.intersect(ray, hit)) {
            return seen;
        }
        const SurfacePoint point = geometry_.surfaceAt(ray, hit);
        seen *= point.shader().mayPass() ? point.shader().passing(point) : RGB{0.0f};
        if (isBlack(seen)) {
            return seen;
        }
        ray.far -= length(point.leave(ray.direction) - ray.origin);
        ray.origin = point.leave(ray.direction);
        if (!(ray.far > 0.0f)) {
            return seen;
        }
    }
    return RGB{0.0f};
}

} // namespace engine
