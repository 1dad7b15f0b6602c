// SPDX-License-Identifier: MIT
#include "engine/geometry.h"

#include "engine/sphere_shape.h"
#include "engine/surface_point.h"
#include "foundation/exceptions.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace engine {

namespace {

using Quenza::Mesh;
using Quenza::u32;
using Quenza::u64;

/// What a ray skips, it skips this many times at most: a fault in the numbers must not hang a render.
constexpr int MAX_SKIPS = 10000;

enum : unsigned { TRIANGLES = 0, QUADS = 1 };

std::vector<Quenza::Vec3f> smoothNormals(const Shape& shape) {
    std::vector<Vec> sums(shape.mesh->vert_positions.size());
    for (u64 i = 0; i < shape.countTriangles(); ++i) {
        const Shape::Corners t = shape.triangle(i);
        const Vec a = shape.vertex(t.vertices[0]);
        const Vec normal = cross(shape.vertex(t.vertices[1]) - a, shape.vertex(t.vertices[2]) - a);
        for (const u32 v : t.vertices) {
            sums[v] += normal;
        }
    }
    std::vector<Quenza::Vec3f> normals;
    normals.reserve(sums.size());
    for (const Vec& sum : sums) {
        const Vec n = normalise(sum);
        normals.push_back({n.x, n.y, n.z});
    }
    return normals;
}

/// Embree reads vertices as blocks of 16 bytes, so 4 bytes behind the last one must be ours as well.
void padVertices(Mesh& mesh) {
    if (mesh.vert_positions.capacity() == mesh.vert_positions.size()) {
        mesh.vert_positions.reserve(mesh.vert_positions.size() + 1);
    }
}

void attachFaces(RTCDevice device, RTCScene scene, const Mesh& mesh, unsigned id, RTCGeometryType type,
                 RTCFormat format, const void* faces, size_t stride, size_t count) {
    if (count == 0) {
        return;
    }
    RTCGeometry geometry = rtcNewGeometry(device, type);
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                               mesh.vert_positions.data(), 0, sizeof(Quenza::Vec3f),
                               mesh.vert_positions.size());
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, format, faces, 0, stride, count);
    rtcCommitGeometry(geometry);
    rtcAttachGeometryByID(scene, geometry, id);
    rtcReleaseGeometry(geometry);
}

RTCScene newScene(RTCDevice device) {
    RTCScene scene = rtcNewScene(device);
    // Without gaps along shared edges.
    rtcSetSceneFlags(scene, RTC_SCENE_FLAG_ROBUST);
    return scene;
}

void setTransforms(RTCGeometry geometry, const MotionTransform& transform) {
    const std::vector<Affine>& steps = transform.steps();
    rtcSetGeometryTimeStepCount(geometry, unsigned(steps.size()));
    for (unsigned i = 0; i < steps.size(); ++i) {
        const Affine& m = steps[i];
        const float columns[12] = {m.x.x, m.x.y, m.x.z, m.y.x,      m.y.y,      m.y.z,
                                   m.z.x, m.z.y, m.z.z, m.origin.x, m.origin.y, m.origin.z};
        rtcSetGeometryTransform(geometry, i, RTC_FORMAT_FLOAT3X4_COLUMN_MAJOR, columns);
    }
}

RTCRay toEmbree(const Ray& ray) {
    RTCRay r{};
    r.org_x = ray.origin.x;
    r.org_y = ray.origin.y;
    r.org_z = ray.origin.z;
    r.dir_x = ray.direction.x;
    r.dir_y = ray.direction.y;
    r.dir_z = ray.direction.z;
    r.tnear = ray.near;
    r.tfar = ray.far;
    r.time = ray.time;
    r.mask = 0xFFFFFFFFu;
    return r;
}

Hit toHit(const RTCRayHit& found, const std::vector<std::unique_ptr<Instance>>& instances) {
    Hit hit;
    hit.instance = instances[found.hit.instID[0]].get();
    hit.distance = found.ray.tfar;
    const Shape& shape = *hit.instance->shape;
    if (!shape.mesh) {
        hit.sphere_normal = {found.hit.Ng_x, found.hit.Ng_y, found.hit.Ng_z};
        return hit;
    }
    hit.u = found.hit.u;
    hit.v = found.hit.v;
    hit.triangle = found.hit.primID;
    if (found.hit.geomID == QUADS) {
        const bool second = hit.u + hit.v > 1.0f;
        hit.triangle = shape.mesh->triangles.size() + 2 * u64(found.hit.primID) + (second ? 1 : 0);
        if (second) {
            hit.u = 1.0f - hit.u;
            hit.v = 1.0f - hit.v;
        }
    }
    return hit;
}

} // namespace

Shape::Corners Shape::triangle(u64 index) const {
    if (index < mesh->triangles.size()) {
        const Quenza::MeshTriangle& t = mesh->triangles[index];
        return {{t.vertex_indices[0], t.vertex_indices[1], t.vertex_indices[2]},
                {t.uv_indices[0], t.uv_indices[1], t.uv_indices[2]},
                t.tri_mat_index};
    }
    const u64 half = index - mesh->triangles.size();
    const Quenza::MeshQuad& q = mesh->quads[half / 2];
    const u32 a = half % 2 == 0 ? 0 : 2;
    const u32 b = half % 2 == 0 ? 1 : 3;
    const u32 c = half % 2 == 0 ? 3 : 1;
    return {{q.vertex_indices[a], q.vertex_indices[b], q.vertex_indices[c]},
            {q.uv_indices[a], q.uv_indices[b], q.uv_indices[c]},
            q.mat_index};
}

// Its threads stay free to move between processors, which not every system lets it bind them to.
Geometry::Geometry() : device_(rtcNewDevice("set_affinity=0")) {
    if (!device_) {
        throw Quenza::QuenzaException("the ray tracing library doesn't start, error " +
                                      std::to_string(int(rtcGetDeviceError(nullptr))));
    }
}

Geometry::~Geometry() {
    for (const auto& shape : shapes_) {
        rtcReleaseScene(shape->scene);
    }
    if (top_) {
        rtcReleaseScene(top_);
    }
    rtcReleaseDevice(device_);
}

void Geometry::failOnError(const char* what) const {
    const RTCError error = rtcGetDeviceError(device_);
    if (error == RTC_ERROR_OUT_OF_MEMORY) {
        throw Quenza::QuenzaException(std::string("there isn't enough memory for ") + what);
    }
    if (error != RTC_ERROR_NONE) {
        throw Quenza::QuenzaException(std::string("the ray tracing library refuses ") + what + ", error " +
                                      std::to_string(int(error)));
    }
}

const Shape* Geometry::addMesh(const Quenza::Ref<Mesh>& mesh, bool smooth) {
    mesh->checkAllIndices();
    padVertices(*mesh);
    auto shape = std::make_unique<Shape>();
    shape->mesh = mesh;
    shape->scene = newScene(device_);
    const Shape* const added = shape.get();
    shapes_.push_back(std::move(shape));
    if (smooth && mesh->vert_normals.empty()) {
        shapes_.back()->smooth_normals = smoothNormals(*added);
    }
    attachFaces(device_, added->scene, *mesh, TRIANGLES, RTC_GEOMETRY_TYPE_TRIANGLE, RTC_FORMAT_UINT3,
                mesh->triangles.data(), sizeof(Quenza::MeshTriangle), mesh->triangles.size());
    attachFaces(device_, added->scene, *mesh, QUADS, RTC_GEOMETRY_TYPE_QUAD, RTC_FORMAT_UINT4,
                mesh->quads.data(), sizeof(Quenza::MeshQuad), mesh->quads.size());
    rtcCommitScene(added->scene);
    failOnError("a mesh");
    return added;
}

const Shape* Geometry::sphere() {
    if (!sphere_) {
        auto shape = std::make_unique<Shape>();
        shape->scene = newScene(device_);
        attachUnitSphere(device_, shape->scene);
        rtcCommitScene(shape->scene);
        sphere_ = shape.get();
        shapes_.push_back(std::move(shape));
        failOnError("a sphere");
    }
    return sphere_;
}

Instance& Geometry::addInstance(std::unique_ptr<Instance> instance) {
    instances_.push_back(std::move(instance));
    return *instances_.back();
}

void Geometry::commit() {
    top_ = newScene(device_);
    for (unsigned id = 0; id < instances_.size(); ++id) {
        const Instance& instance = *instances_[id];
        RTCGeometry geometry = rtcNewGeometry(device_, RTC_GEOMETRY_TYPE_INSTANCE);
        rtcSetGeometryInstancedScene(geometry, instance.shape->scene);
        setTransforms(geometry, instance.transform);
        rtcCommitGeometry(geometry);
        rtcAttachGeometryByID(top_, geometry, id);
        rtcReleaseGeometry(geometry);
        hides_ = hides_ || instance.invisible_to_camera || instance.cut_planes != 0;
    }
    rtcCommitScene(top_);
    failOnError("the scene");
    RTCBounds box{};
    rtcGetSceneBounds(top_, &box);
    if (!instances_.empty() && box.lower_x <= box.upper_x) {
        radius_ = length({std::max(std::abs(box.lower_x), std::abs(box.upper_x)),
                          std::max(std::abs(box.lower_y), std::abs(box.upper_y)),
                          std::max(std::abs(box.lower_z), std::abs(box.upper_z))});
    }
}

bool Geometry::isCut(const Ray& ray, float distance, u64 planes) const {
    const Vec position = ray.origin + ray.direction * distance;
    for (u64 i = 0; i < cut_planes_.size(); ++i) {
        if ((planes >> i & 1) != 0 && dot(position, cut_planes_[i].normal) > cut_planes_[i].offset) {
            return true;
        }
    }
    return false;
}

bool Geometry::intersect(const Ray& ray, Hit& hit, bool from_camera) const {
    RTCRayHit query{};
    query.ray = toEmbree(ray);
    for (int skipped = 0; skipped < MAX_SKIPS; ++skipped) {
        query.ray.tfar = ray.far;
        query.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        query.hit.instID[0] = RTC_INVALID_GEOMETRY_ID;
        RTCIntersectContext context;
        rtcInitIntersectContext(&context);
        rtcIntersect1(top_, &context, &query);
        if (query.hit.geomID == RTC_INVALID_GEOMETRY_ID) {
            return false;
        }
        const Instance& instance = *instances_[query.hit.instID[0]];
        const bool hidden = hides_ && ((from_camera && instance.invisible_to_camera) ||
                                       isCut(ray, query.ray.tfar, instance.cut_planes));
        if (!hidden) {
            hit = toHit(query, instances_);
            return true;
        }
        query.ray.tnear = query.ray.tfar * 1.000002f + 1e-7f;
    }
    return false;
}

bool Geometry::occluded(const Ray& ray) const {
    if (hides_ && !cut_planes_.empty()) {
        Hit hit;
        return intersect(ray, hit);
    }
    RTCRay query = toEmbree(ray);
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    rtcOccluded1(top_, &context, &query);
    return query.tfar < 0.0f;
}

SurfacePoint Geometry::surfaceAt(const Ray& ray, const Hit& hit) const {
    const Affine place = hit.instance->transform.at(ray.time);
    SurfacePoint point = hit.instance->shape->mesh
                             ? pointOnTriangle(*hit.instance, hit.triangle, hit.u, hit.v, place)
                             : pointOnSphere(*hit.instance, hit.sphere_normal, place);
    point.error += 1e-6f * hit.distance;
    point.ray_direction = ray.direction;
    return point;
}

} // namespace engine
