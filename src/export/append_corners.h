// SPDX-License-Identifier: MIT
#pragma once

#include "export/face_writer.h"
#include "export/mesh_arrays.h"

#include <algorithm>

/// Every corner of the runs becomes a record of its own. `cornerCount` is their number. `Corners` is one of
/// the kinds of mesh_corners.h.
template <class Corners>
void appendCorners(const MeshArrays& arrays, const PolygonRuns& runs, uint64_t cornerCount, Corners corners,
                   Quenza::Mesh& mesh) {
    constexpr int32_t ahead = 16; // polygons whose points are on their way from memory
    corners.resize(cornerCount);
    FaceWriter<Corners> faces(mesh);
    uint32_t next = 0;
    for (const PolygonRun& run : runs) {
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
