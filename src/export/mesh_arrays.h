// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

#include <cstdint>
#include <vector>

/// Where the UVs of a mesh come from: the host's records, one per polygon, with the tiling of a texture tag.
/// A corner (u, v) becomes (u * scaleU - shiftU, v * scaleV - shiftV).
struct UvSource {
    const UVWStruct* records = nullptr; ///< Null stands for zeros.
    float scaleU = 1.0f;
    float scaleV = 1.0f;
    float shiftU = 0.0f;
    float shiftV = 0.0f;
};

/// A polygon mesh as the host holds it. Borrowed arrays in the host's space.
struct MeshArrays {
    const Vector* points = nullptr;
    const CPolygon* polygons = nullptr;
    const Vector* normals = nullptr; ///< Four per polygon, of any length; null for a mesh without normals.
    int32_t pointCount = 0;
    int32_t polygonCount = 0;
    UvSource uvs;
};

/// The point at a corner, 0 to 3 for a, b, c, d.
inline uint32_t cornerPoint(const CPolygon& polygon, uint32_t corner) {
    return static_cast<uint32_t>((&polygon.a)[corner]);
}

inline uint32_t cornerCountOf(const CPolygon& polygon) {
    return polygon.IsTriangle() ? 3 : 4;
}

/// Neighbouring polygons of one material slot: those from `from` up to, and without, `to`.
struct PolygonRun {
    int32_t from = 0;
    int32_t to = 0;
    uint32_t slot = 0;

    bool operator==(const PolygonRun&) const = default;
};

/// The polygons of a mesh in the order in which they leave; each polygon stands in at most one run.
using PolygonRuns = std::vector<PolygonRun>;

/// Why a mesh can't leave for the scene.
enum class MeshFault {
    NONE,
    POINT_INDEX, ///< A polygon refers to a point that doesn't exist.
    NOT_FINITE,  ///< A coordinate is infinite or not a number, or becomes so in metres.
    TOO_LARGE,   ///< More corners than a mesh file can count.
};

/// The first fault that `mesh` has when its lengths are multiplied by `scale`.
MeshFault findMeshFault(const MeshArrays& mesh, float scale);
