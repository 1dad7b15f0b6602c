// SPDX-License-Identifier: MIT
#include "engine/sphere_shape.h"

#include <cmath>
#include <initializer_list>

namespace engine {

namespace {

void bounds(const RTCBoundsFunctionArguments* arguments) {
    RTCBounds& box = *arguments->bounds_o;
    box.lower_x = box.lower_y = box.lower_z = -1.0f;
    box.upper_x = box.upper_y = box.upper_z = 1.0f;
}

struct Roots {
    bool any = false;
    double near = 0, far = 0;
};

/// In doubles: a lamp of a centimetre is seen from a hundred metres away.
Roots meet(const RTCRay& ray) {
    const double ox = double(ray.org_x), oy = double(ray.org_y), oz = double(ray.org_z);
    const double dx = double(ray.dir_x), dy = double(ray.dir_y), dz = double(ray.dir_z);
    const double a = dx * dx + dy * dy + dz * dz;
    const double half_b = ox * dx + oy * dy + oz * dz;
    // The discriminant by the point nearest to the centre, which loses no digits far away.
    const double t = -half_b / a;
    const double px = ox + t * dx, py = oy + t * dy, pz = oz + t * dz;
    const double inside = 1.0 - (px * px + py * py + pz * pz);
    if (!(inside >= 0.0)) {
        return {};
    }
    const double half = std::sqrt(inside / a);
    return {true, t - half, t + half};
}

/// The first root within the ray; false when there is none.
bool firstWithin(const RTCRay& ray, double& t) {
    const Roots roots = meet(ray);
    if (!roots.any) {
        return false;
    }
    for (const double root : {roots.near, roots.far}) {
        if (root > double(ray.tnear) && root < double(ray.tfar)) {
            t = root;
            return true;
        }
    }
    return false;
}

void intersect(const RTCIntersectFunctionNArguments* arguments) {
    if (arguments->valid[0] == 0) {
        return;
    }
    auto& query = *reinterpret_cast<RTCRayHit*>(arguments->rayhit); // One ray: that is its layout.
    double t = 0;
    if (!firstWithin(query.ray, t)) {
        return;
    }
    query.ray.tfar = float(t);
    query.hit.Ng_x = float(double(query.ray.org_x) + t * double(query.ray.dir_x));
    query.hit.Ng_y = float(double(query.ray.org_y) + t * double(query.ray.dir_y));
    query.hit.Ng_z = float(double(query.ray.org_z) + t * double(query.ray.dir_z));
    query.hit.u = query.hit.v = 0.0f;
    query.hit.geomID = arguments->geomID;
    query.hit.primID = arguments->primID;
    query.hit.instID[0] = arguments->context->instID[0];
}

void occluded(const RTCOccludedFunctionNArguments* arguments) {
    if (arguments->valid[0] == 0) {
        return;
    }
    auto& ray = *reinterpret_cast<RTCRay*>(arguments->ray);
    double t = 0;
    if (firstWithin(ray, t)) {
        ray.tfar = -INFINITY;
    }
}

} // namespace

void attachUnitSphere(RTCDevice device, RTCScene scene) {
    RTCGeometry geometry = rtcNewGeometry(device, RTC_GEOMETRY_TYPE_USER);
    rtcSetGeometryUserPrimitiveCount(geometry, 1);
    rtcSetGeometryBoundsFunction(geometry, bounds, nullptr);
    rtcSetGeometryIntersectFunction(geometry, intersect);
    rtcSetGeometryOccludedFunction(geometry, occluded);
    rtcCommitGeometry(geometry);
    rtcAttachGeometry(scene, geometry);
    rtcReleaseGeometry(geometry);
}

} // namespace engine
