// SPDX-License-Identifier: MIT
#include "headless/import/mesh_arrays.h"

#include <algorithm>
#include <cmath>

namespace headless {

namespace {

/// An edge of a polygon with its ends in rising order, which is how its two polygons find each other.
struct Edge {
    uint64_t ends;
    int32_t number;
};

class Normals {
public:
    Normals(const MeshArrays& arrays, std::span<const aiMesh* const> meshes)
        : arrays_(arrays), meshes_(meshes) {}

    /// The normal of an edge's polygon at the end with the lower or the higher point.
    aiVector3D at(const Edge& edge, bool lower) const {
        const auto polygon = static_cast<size_t>(edge.number / 4);
        const size_t start = static_cast<size_t>(edge.number % 4);
        // The edge c-a of a triangle is number 3, and its d is its c.
        const size_t end = (start + 1) % 4;
        const bool rising = point(polygon, start) < point(polygon, end);
        const MeshArrays::Corner corner = arrays_.corners[polygon][rising == lower ? start : end];
        const aiMesh& mesh = *meshes_[corner.mesh];
        return mesh.mNormals ? mesh.mNormals[corner.vertex] : aiVector3D();
    }

    int32_t point(size_t polygon, size_t corner) const {
        const CPolygon& p = arrays_.polygons[polygon];
        const int32_t points[4] = {p.a, p.b, p.c, p.d};
        return points[corner];
    }

private:
    const MeshArrays& arrays_;
    std::span<const aiMesh* const> meshes_;
};

/// Within a degree. A normal that is none agrees with all.
bool agree(const aiVector3D& a, const aiVector3D& b) {
    constexpr float COSINE = 0.99985f;
    const float lengths = std::sqrt((a * a) * (b * b));
    return !(lengths > 0.0f) || !(a * b < COSINE * lengths);
}

std::vector<Edge> listEdges(const MeshArrays& arrays, const Normals& normals) {
    std::vector<Edge> edges;
    edges.reserve(arrays.polygons.size() * 4);
    for (size_t polygon = 0; polygon < arrays.polygons.size(); ++polygon) {
        for (size_t edge = 0; edge < 4; ++edge) {
            const auto a = static_cast<uint32_t>(normals.point(polygon, edge));
            const auto b = static_cast<uint32_t>(normals.point(polygon, (edge + 1) % 4));
            if (a != b) {
                edges.push_back({static_cast<uint64_t>(std::min(a, b)) << 32 | std::max(a, b),
                                 static_cast<int32_t>(polygon * 4 + edge)});
            }
        }
    }
    std::sort(edges.begin(), edges.end(), [](const Edge& x, const Edge& y) {
        return x.ends != y.ends ? x.ends < y.ends : x.number < y.number;
    });
    return edges;
}

} // namespace

EdgeShading edgeShading(const MeshArrays& arrays, std::span<const aiMesh* const> meshes) {
    EdgeShading shading;
    const Normals normals(arrays, meshes);
    const std::vector<Edge> edges = listEdges(arrays, normals);
    for (size_t first = 0, behind = 0; first < edges.size(); first = behind) {
        bool smooth = true;
        for (behind = first + 1; behind < edges.size() && edges[behind].ends == edges[first].ends; ++behind) {
            smooth = smooth && agree(normals.at(edges[first], true), normals.at(edges[behind], true)) &&
                     agree(normals.at(edges[first], false), normals.at(edges[behind], false));
        }
        // The rim of an open surface has one polygon, and nothing to break.
        if (behind - first < 2) {
            continue;
        }
        shading.anySmooth = shading.anySmooth || smooth;
        for (size_t i = first; i < behind && !smooth; ++i) {
            shading.broken.push_back(edges[i].number);
        }
    }
    std::sort(shading.broken.begin(), shading.broken.end());
    return shading;
}

} // namespace headless
