// SPDX-License-Identifier: MIT
#pragma once

#include "export/face_writer.h"
#include "export/mesh_arrays.h"

#include <algorithm>

/// A part of a mesh's polygons, and how many corners and faces come before it.
struct PolygonSlice {
    PolygonRuns runs;
    uint32_t firstCorner = 0;
    size_t firstTriangle = 0;
    size_t firstQuad = 0;
};

/// Every corner of the slice becomes a record of its own. The arrays of `mesh` have their final sizes
/// already. `Corners` is one of the kinds of mesh_corners.h.
template <class Corners>
void appendCorners(const MeshArrays& arrays, const PolygonSlice& slice, Corners corners, Quenza::Mesh& mesh) {
    constexpr int32_t ahead = 16; // polygons whose points are on their way from memory
    FaceWriter<Corners> faces(mesh, slice.firstTriangle, slice.firstQuad);
    uint32_t next = slice.firstCorner;
    for (const PolygonRun& run : slice.runs) {
        for (int32_t i = run.from; i < run.to; ++i) {
            const CPolygon& coming = arrays.polygons[std::min(i + ahead, run.to - 1)];
            for (uint32_t c = 0; c < 4; ++c) {
                corners.prefetchPlace(cornerPoint(coming, c));
            }
            const CPolygon& polygon = arrays.polygons[i];
            const uint32_t count = cornerCountOf(polygon);
            for (uint32_t c = 0; c < count; ++c) {
                corners.write(next + c, cornerPoint(polygon, c), corners.readDetail(i, c));
            }
            const uint32_t indices[4] = {next, next + 1, next + 2, next + 3};
            faces.write(indices, polygon.IsTriangle(), run.slot);
            next += count;
        }
    }
}
