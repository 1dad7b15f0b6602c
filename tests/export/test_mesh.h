// SPDX-License-Identifier: MIT
#pragma once

#include "export/mesh_arrays.h"

#include <vector>

/// Host arrays that a test fills.
struct TestMesh {
    std::vector<Vector> points;
    std::vector<CPolygon> polygons;
    std::vector<Vector> normals; ///< Four a polygon, or empty.
    std::vector<UVWStruct> uvs;  ///< One a polygon, or empty.

    MeshArrays arrays() const {
        MeshArrays arrays;
        arrays.points = points.data();
        arrays.pointCount = static_cast<int32_t>(points.size());
        arrays.polygons = polygons.data();
        arrays.polygonCount = static_cast<int32_t>(polygons.size());
        arrays.normals = normals.empty() ? nullptr : normals.data();
        arrays.uvs.records = uvs.empty() ? nullptr : uvs.data();
        return arrays;
    }
    PolygonRuns oneRun() const { return {{0, static_cast<int32_t>(polygons.size()), 0}}; }
};
