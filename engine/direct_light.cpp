// SPDX-License-Identifier: MIT
#include "engine/direct_light.h"

#include "engine/sampling.h"
#include "engine/scattering.h"
#include "engine/surface_shader.h"

namespace engine {

namespace {

/// Surfaces that a ray to a light passes.
constexpr int MAX_SURFACES = 20000;
/// Samples of each kind of light for a shadow that is caught.
constexpr int SHADOW_SAMPLES = 4;

} // namespace

DirectLight::DirectLight(const Geometry& geometry, const Lights& lights, const Background& background)
    : geometry_(geometry), lights_(lights), background_(background) {
    const InternalMedium* first = nullptr;
    for (const auto& instance : geometry.instances()) {
        for (const SurfaceShader* shader : instance->materials) {
            const InternalMedium* const medium = shader->medium();
            first = first ? first : medium;
            // Within a medium of higher precedence, or of the same index, another one's boundary isn't there.
            surfaces_pass_ =
                surfaces_pass_ || shader->mayPass() || shader->catches_shadows || (medium && medium != first);
        }
    }
}

template <class Use>
void DirectLight::sample(const Path& path, const Vec& from, Random& random, const Use& use) const {
    LightSample sample;
    if (!lights_.empty() && lights_.sample(from, path.ray.time, random, sample)) {
        use(sample);
    }
    if (background_.hasSurround()) {
        background_.sampleSurround(random, sample);
        use(sample);
    }
    if (background_.hasSun()) {
        background_.sampleSun(random, sample);
        use(sample);
    }
}

void DirectLight::add(const Path& path, const Vertex& vertex, Random& random, std::span<RGB> layers) const {
    sample(path, vertex.position, random, [&](const LightSample& light) {
        float pdf = 0;
        const RGB scattered = vertex.evaluate(light.direction, pdf);
        if (isBlack(scattered) || !(light.pdf > 0.0f)) {
            return;
        }
        const RGB left = seen(path, vertex, light);
        if (!isBlack(left)) {
            light.radiance.addTo(layers, path.throughput * scattered * left *
                                             (misWeight(light.pdf, pdf) / light.pdf));
        }
    });
}

RGB DirectLight::shadowOn(const Path& path, const SurfacePoint& point, Random& random) const {
    BSDF white(point, -path.ray.direction);
    white.add(Lobe{});
    Vertex vertex;
    vertex.position = point.position;
    vertex.surface = &point;
    vertex.bsdf = &white;
    RGB all, left;
    for (int i = 0; i < SHADOW_SAMPLES; ++i) {
        sample(path, point.position, random, [&](const LightSample& light) {
            float pdf = 0;
            const RGB scattered = vertex.evaluate(light.direction, pdf);
            if (!isBlack(scattered) && light.pdf > 0.0f) {
                const RGB radiance = scattered * light.radiance.total() / light.pdf;
                all += radiance;
                left += radiance * seen(path, vertex, light);
            }
        });
    }
    const auto share = [](float part, float whole) { return whole > 0.0f ? part / whole : 1.0f; };
    return {share(left.r, all.r), share(left.g, all.g), share(left.b, all.b)};
}

/// What of the light arrives.
RGB DirectLight::seen(const Path& path, const Vertex& vertex, const LightSample& sample) const {
    Ray shadow;
    shadow.origin = vertex.leave(sample.direction);
    shadow.direction = sample.direction;
    if (!sample.infinite) {
        // Both ends keep off their surfaces, which turns the way between them by a trifle.
        const Vec way = sample.target - shadow.origin;
        shadow.far = length(way);
        shadow.direction = normalise(way);
    }
    shadow.time = path.ray.time;
    if (surfaces_pass_) {
        return throughSurfaces(shadow, path);
    }
    return geometry_.occluded(shadow) ? RGB{0.0f} : transmittance(path.media.current(), shadow.far);
}

RGB DirectLight::throughSurfaces(Ray ray, const Path& path) const {
    MediumStack media = path.media;
    RGB left{1.0f};
    float passed = 0; // How far the ray has come.
    for (int i = 0; i < MAX_SURFACES; ++i) {
        Hit hit;
        const bool found = geometry_.intersect(ray, hit);
        left *= transmittance(media.current(), (found ? hit.distance : ray.far) - passed);
        if (!found) {
            return left;
        }
        const SurfacePoint point = geometry_.surfaceAt(ray, hit);
        const SurfaceShader& shader = point.shader();
        ShadeContext context;
        context.front = dot(ray.direction, point.normal) < 0.0f;
        const Interface interface = interfaceOf(media, shader.medium(), context.front, path.wavelength);
        context.eta = interface.eta;
        if (interface.real && !shader.catches_shadows) {
            left *= shader.mayPass() || shader.medium() ? shader.passing(point, context) : RGB{0.0f};
        }
        if (isBlack(left)) {
            return left;
        }
        media.cross(shader.medium(), context.front);
        passed = hit.distance;
        // On the same line still: a ray that is shifted may end inside a small lamp.
        ray.near = hit.distance + point.error;
        if (ray.near >= ray.far) {
            return left;
        }
    }
    return RGB{0.0f};
}

} // namespace engine
