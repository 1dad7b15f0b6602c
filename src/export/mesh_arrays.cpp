// SPDX-License-Identifier: MIT
#include "export/mesh_arrays.h"

#include <algorithm>
#include <cmath>

namespace {

/// What one vector of a mesh file can hold.
constexpr int64_t largestCount = 0x7FFFFFFF;

// Both loops gather over the whole array instead of leaving early: that is how they run at memory speed.

bool indicesFit(const MeshArrays& mesh) {
    const auto limit = static_cast<uint32_t>(mesh.pointCount);
    uint32_t largest = 0; // as unsigned numbers, negative indices are the largest
    for (int32_t i = 0; i < mesh.polygonCount; ++i) {
        const CPolygon& polygon = mesh.polygons[i];
        const uint32_t ab = std::max(static_cast<uint32_t>(polygon.a), static_cast<uint32_t>(polygon.b));
        const uint32_t cd = std::max(static_cast<uint32_t>(polygon.c), static_cast<uint32_t>(polygon.d));
        largest = std::max(largest, std::max(ab, cd));
    }
    return mesh.polygonCount == 0 || largest < limit;
}

bool coordinatesAreFinite(const MeshArrays& mesh, float scale) {
    const auto count = static_cast<size_t>(mesh.pointCount);
    uint32_t bad = 0;
    for (size_t i = 0; i < count; ++i) {
        const Vector scaled = mesh.points[i] * scale;
        // A finite number less itself is 0, anything else isn't a number.
        bad |= static_cast<uint32_t>(!(scaled.x - scaled.x == 0.0f)) |
               static_cast<uint32_t>(!(scaled.y - scaled.y == 0.0f)) |
               static_cast<uint32_t>(!(scaled.z - scaled.z == 0.0f));
    }
    return bad == 0;
}

} // namespace

MeshFault findMeshFault(const MeshArrays& mesh, float scale) {
    if (int64_t(mesh.polygonCount) * 4 > largestCount) {
        return MeshFault::TOO_LARGE;
    }
    if (!indicesFit(mesh)) {
        return MeshFault::POINT_INDEX;
    }
    return coordinatesAreFinite(mesh, scale) ? MeshFault::NONE : MeshFault::NOT_FINITE;
}
