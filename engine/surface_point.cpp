// SPDX-License-Identifier: MIT
#include "engine/surface_point.h"

#include "engine/sampling.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

using Quenza::u32;
using Quenza::u64;

/// In units of the largest coordinate: some 16 steps of a float.
constexpr float RELATIVE_ERROR = 2e-6f;

float errorAt(const Vec& p) {
    return RELATIVE_ERROR * (1e-2f + std::max({std::abs(p.x), std::abs(p.y), std::abs(p.z)}));
}

Vec mix(const Vec& a, const Vec& b, const Vec& c, float u, float v) {
    return a * (1.0f - u - v) + b * u + c * v;
}

Vec shadingNormal(const Shape& shape, const Shape::Corners& t, float u, float v, const Vec& facet) {
    const Quenza::Vec3f* const normals = !shape.mesh->vert_normals.empty() ? shape.mesh->vert_normals.data()
                                         : !shape.smooth_normals.empty()   ? shape.smooth_normals.data()
                                                                           : nullptr;
    if (!normals) {
        return facet;
    }
    const Vec n = mix(toVec(normals[t.vertices[0]]), toVec(normals[t.vertices[1]]),
                      toVec(normals[t.vertices[2]]), u, v);
    return dot(n, n) > 0.0f ? n : facet;
}

Quenza::Vec2f uvOf(const Quenza::Mesh& mesh, u32 entry, u32 set) {
    return mesh.uv_pairs[u64(entry) * mesh.num_uv_mappings + set];
}

/// Solves for the change of the position along u and v; leaves zero where the UVs don't span the triangle.
void setUVDerivatives(SurfacePoint& point, const Quenza::Mesh& mesh, const Vec& ab, const Vec& ac) {
    if (mesh.num_uv_mappings == 0) {
        return;
    }
    const Quenza::Vec2f a = uvOf(mesh, point.uv_index[0], 0);
    const Quenza::Vec2f b = uvOf(mesh, point.uv_index[1], 0);
    const Quenza::Vec2f c = uvOf(mesh, point.uv_index[2], 0);
    const float det = (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
    if (det == 0.0f || !std::isfinite(1.0f / det)) {
        return;
    }
    point.dpdu = (ab * (c.y - a.y) - ac * (b.y - a.y)) * (1.0f / det);
    point.dpdv = (ac * (b.x - a.x) - ab * (c.x - a.x)) * (1.0f / det);
}

} // namespace

Quenza::Vec2f SurfacePoint::uv(u32 set) const {
    if (!instance) {
        // A direction of the background, as a panorama that is seen from within has it: straight ahead (+y)
        // is its middle, the right side lies towards +x.
        const Vec d = normalise(position);
        return {0.5f + std::atan2(d.x, d.y) / (2 * PI), 0.5f + std::asin(std::clamp(d.z, -1.0f, 1.0f)) / PI};
    }
    if (!instance->shape->mesh) {
        // As the host's own spheres have it: u starts at +x.
        const Vec& n = sphere_normal;
        const float longitude = std::atan2(n.y, n.x) / (2 * PI);
        return {longitude < 0.0f ? longitude + 1.0f : longitude,
                0.5f + std::asin(std::clamp(n.z, -1.0f, 1.0f)) / PI};
    }
    const Quenza::Mesh& mesh = *instance->shape->mesh;
    if (set >= mesh.num_uv_mappings) {
        return {0, 0};
    }
    const Quenza::Vec2f a = uvOf(mesh, uv_index[0], set);
    const Quenza::Vec2f b = uvOf(mesh, uv_index[1], set);
    const Quenza::Vec2f c = uvOf(mesh, uv_index[2], set);
    const float w = 1.0f - u - v;
    return {a.x * w + b.x * u + c.x * v, a.y * w + b.y * u + c.y * v};
}

SurfacePoint pointOnTriangle(const Instance& instance, u64 triangle, float u, float v, const Affine& place) {
    const Shape& shape = *instance.shape;
    const Shape::Corners t = shape.triangle(triangle);
    const Vec a = shape.vertex(t.vertices[0]);
    const Vec ab = shape.vertex(t.vertices[1]) - a;
    const Vec ac = shape.vertex(t.vertices[2]) - a;
    const Vec facet = cross(ab, ac);

    SurfacePoint point;
    point.instance = &instance;
    point.triangle = triangle;
    // A mesh that says more materials than the model has is refused when the scene is bound.
    point.material = std::min(t.material, u32(instance.materials.size() - 1));
    point.u = u;
    point.v = v;
    std::copy(t.uvs, t.uvs + 3, point.uv_index);
    point.position = place.point(a + ab * u + ac * v);
    point.normal = normalise(place.normal(facet));
    point.shading_normal = normalise(place.normal(shadingNormal(shape, t, u, v, facet)));
    if (dot(point.shading_normal, point.normal) < 0.0f) {
        point.shading_normal = -point.shading_normal;
    }
    setUVDerivatives(point, *shape.mesh, place.vector(ab), place.vector(ac));
    point.error = errorAt(point.position) + errorAt(place.vector(a));
    return point;
}

SurfacePoint pointOnSphere(const Instance& instance, const Vec& normal, const Affine& place) {
    SurfacePoint point;
    point.instance = &instance;
    point.sphere_normal = normalise(normal);
    point.position = place.point(point.sphere_normal);
    point.normal = normalise(place.normal(point.sphere_normal));
    point.shading_normal = point.normal;
    const float radius = length(place.x);
    const Vec& n = point.sphere_normal;
    point.dpdu = place.vector({-n.y, n.x, 0}) * (2 * PI);
    const float flat = std::sqrt(n.x * n.x + n.y * n.y);
    if (flat > 0.0f) {
        point.dpdv = place.vector({-n.z * n.x / flat, -n.z * n.y / flat, flat}) * PI;
    }
    point.error = errorAt(point.position) + RELATIVE_ERROR * radius;
    return point;
}

} // namespace engine
