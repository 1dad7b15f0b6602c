// SPDX-License-Identifier: MIT
#include "headless/geometry/poly_mesh.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace headless::geometry {

bool validate(const PolyMesh& mesh, std::string& reason) {
    if (mesh.points.size() > static_cast<std::size_t>(std::numeric_limits<int32_t>::max())) {
        reason = "more points than a polygon can index: " + std::to_string(mesh.points.size());
        return false;
    }
    if (!mesh.uvw.empty() && mesh.uvw.size() != mesh.polygons.size()) {
        reason = std::to_string(mesh.uvw.size()) + " UVWs for " + std::to_string(mesh.polygons.size()) +
                 " polygons";
        return false;
    }
    const auto pointCount = static_cast<int32_t>(mesh.points.size());
    for (std::size_t i = 0; i < mesh.polygons.size(); ++i) {
        for (const int32_t index : cornersOf(mesh.polygons[i])) {
            if (index < 0 || index >= pointCount) {
                reason = "polygon " + std::to_string(i) + " has the point index " + std::to_string(index) +
                         " but there are " + std::to_string(pointCount) + " points";
                return false;
            }
        }
    }
    return true;
}

void flipWinding(PolyMesh& mesh, std::size_t first) {
    for (std::size_t i = first; i < mesh.polygons.size(); ++i) {
        CPolygon& polygon = mesh.polygons[i];
        const bool triangle = polygon.IsTriangle();
        std::swap(polygon.b, triangle ? polygon.c : polygon.d);
        if (triangle) {
            polygon.d = polygon.c;
        }
        if (!mesh.uvw.empty()) {
            UVWStruct& uvw = mesh.uvw[i];
            std::swap(uvw.b, triangle ? uvw.c : uvw.d);
            if (triangle) {
                uvw.d = uvw.c;
            }
        }
    }
}

Bounds boundsOf(std::span<const Vector> points) {
    Vec3 low(HUGE_VAL, HUGE_VAL, HUGE_VAL);
    Vec3 high(-HUGE_VAL, -HUGE_VAL, -HUGE_VAL);
    for (const Vector& point : points) {
        const Vec3 p(point);
        if (!p.isFinite()) {
            continue;
        }
        low = {std::min(low.x, p.x), std::min(low.y, p.y), std::min(low.z, p.z)};
        high = {std::max(high.x, p.x), std::max(high.y, p.y), std::max(high.z, p.z)};
    }
    if (high.x < low.x) {
        return {};
    }
    return {((low + high) * 0.5).toVector(), ((high - low) * 0.5).toVector()};
}

} // namespace headless::geometry
