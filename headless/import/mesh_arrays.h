// SPDX-License-Identifier: MIT
#pragma once

#include "headless/import/model_space.h"

#include <array>
#include <span>
#include <vector>

namespace headless {

/// The polygons of several meshes as one, before it becomes an object.
struct MeshArrays {
    /// Where a corner comes from.
    struct Corner {
        uint32_t mesh;
        uint32_t vertex;
    };
    /// Points at one place are one.
    std::vector<Vector> points;
    /// Wound for the host, a triangle with c equal to d.
    std::vector<CPolygon> polygons;
    /// Four per polygon, in the order of its points.
    std::vector<std::array<Corner, 4>> corners;
    /// The first polygon of each mesh, and the number of polygons at the end.
    std::vector<size_t> firstPolygon;
};

/// The meshes must be without fault, see `faultOf`.
MeshArrays collectPolygons(std::span<const aiMesh* const> meshes, const ModelSpace& space);

/// The edges, numbered polygon * 4 + edge, along which the meshes' normals don't let the surface look smooth.
struct EdgeShading {
    std::vector<int32_t> broken;
    /// False when no edge is smooth at all.
    bool anySmooth = false;
};
EdgeShading edgeShading(const MeshArrays& arrays, std::span<const aiMesh* const> meshes);

} // namespace headless
