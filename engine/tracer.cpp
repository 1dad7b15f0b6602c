// SPDX-License-Identifier: MIT
#include "engine/tracer.h"

#include "engine/bsdf.h"
#include "engine/sampling.h"
#include "engine/scattering.h"
#include "engine/surface_shader.h"
#include "engine/surrounding_media.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

/// What a path passes: surfaces, those without an effect too, and places in media where it was scattered.
constexpr int MAX_EVENTS = 20000;
/// From that many surfaces, or places in media, on paths end at random, the weaker the more likely.
constexpr int ROULETTE_DEPTH = 4;
constexpr int ROULETTE_SCATTERINGS = 16;
constexpr float MAX_SURVIVAL = 0.97f;

} // namespace

Tracer::Tracer(const Geometry& geometry, const Lights& lights, const Background& background,
               const Vec& camera, int max_depth)
    : geometry_(geometry), lights_(lights), background_(background),
      direct_light_(geometry, lights, background), media_(mediaAround(geometry, camera)),
      max_depth_(max_depth) {}

void Tracer::trace(Ray ray, float weight, Random& random, std::span<RGB> layers) const {
    Path path;
    path.ray = ray;
    path.media = media_;
    path.throughput = RGB{weight};
    path.from = ray.origin;
    for (int event = 0; event < MAX_EVENTS; ++event) {
        Hit hit;
        const bool found = geometry_.intersect(path.ray, hit, path.from_camera);
        const Way way = advance(path, found ? hit.distance : INFINITY, random, layers);
        if (way == Way::ENDED) {
            return;
        }
        if (way == Way::SCATTERED) {
            continue;
        }
        if (!found) {
            addSurround(path, layers);
            return;
        }
        SurfacePoint point = geometry_.surfaceAt(path.ray, hit);
        if (!meet(path, point, random, layers)) {
            return;
        }
    }
}

/// Through the medium, as far as it lets the path, `distance` at most.
Tracer::Way Tracer::advance(Path& path, float distance, Random& random, std::span<RGB> layers) const {
    const InternalMedium* const medium = path.media.current();
    if (!medium || !medium->scatters()) {
        path.throughput *= transmittance(medium, distance);
        return Way::ARRIVED;
    }
    const Flight flight = sampleFlight(*medium, distance, path.throughput, random);
    path.throughput *= flight.weight;
    if (!flight.scattered) {
        return Way::ARRIVED;
    }
    Vertex vertex;
    vertex.position = path.ray.origin + path.ray.direction * flight.distance;
    vertex.direction = path.ray.direction;
    vertex.mean_cosine = medium->mean_cosine;
    direct_light_.add(path, vertex, random, layers);
    path.ray.direction = sampleHenyeyGreenstein(vertex.direction, medium->mean_cosine, random);
    path.ray.origin = path.from = vertex.position;
    path.ray.near = 0;
    path.pdf = henyeyGreenstein(dot(path.ray.direction, vertex.direction), medium->mean_cosine);
    path.from_camera = false;
    ++path.scatterings;
    return survives(path, random) ? Way::SCATTERED : Way::ENDED;
}

/// A surface: it emits, is lit and sends the path on. False when the path ends.
bool Tracer::meet(Path& path, SurfacePoint& point, Random& random, std::span<RGB> layers) const {
    const SurfaceShader& shader = point.shader();
    shader.bump(point);
    const Vec out = -path.ray.direction;
    ShadeContext context;
    context.front = dot(out, point.normal) > 0.0f;
    addEmission(path, point, length(point.position - path.from), layers);

    path.splitAt(shader.medium(), random);
    const Interface interface = interfaceOf(path.media, shader.medium(), context.front, path.wavelength);
    context.eta = interface.eta;
    BSDF bsdf(point, out);
    if (interface.real && !shader.catches_shadows) {
        shader.shade(point, context, RGB{1.0f}, bsdf);
    } else {
        if (shader.catches_shadows) {
            path.throughput *= direct_light_.shadowOn(path, point, random);
        }
        Lobe pass;
        pass.kind = Lobe::Kind::PASS;
        bsdf.add(pass);
    }
    if (bsdf.empty() || path.depth >= max_depth_) {
        return false;
    }
    if (bsdf.hasSmooth()) {
        Vertex vertex;
        vertex.position = point.position;
        vertex.surface = &point;
        vertex.bsdf = &bsdf;
        direct_light_.add(path, vertex, random, layers);
    }
    return scatter(path, point, bsdf, context.front, random) && survives(path, random);
}

bool Tracer::scatter(Path& path, const SurfacePoint& point, const BSDF& bsdf, bool front, Random& random) {
    BSDF::Sample sample;
    if (!bsdf.sample(random, sample)) {
        return false;
    }
    path.throughput *= sample.weight;
    path.ray.origin = point.leave(sample.in);
    path.ray.direction = sample.in;
    path.ray.near = 0;
    if (sample.transmitted) {
        path.media.cross(point.shader().medium(), front);
    }
    if (!sample.passed) {
        path.from = point.position;
        path.pdf = sample.pdf;
        path.from_camera = false;
        ++path.depth;
    }
    return true;
}

bool Tracer::survives(Path& path, Random& random) {
    const float strength = maxComponent(path.throughput);
    if (!(strength > 0.0f) || !std::isfinite(strength)) {
        return false;
    }
    if (path.depth < ROULETTE_DEPTH && path.scatterings < ROULETTE_SCATTERINGS) {
        return true;
    }
    // Light that a medium doesn't absorb comes out of it after very many turns.
    const float chance = std::min(path.media.current() ? 1.0f : MAX_SURVIVAL, strength);
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
    profile->emitted(point, -path.ray.direction, path.ray.time).addTo(layers, path.throughput * weight);
}

} // namespace engine
