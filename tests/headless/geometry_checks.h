// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <map>
#include <ostream>
#include <set>
#include <utility>
#include <vector>

#include "headless/geometry/poly_mesh.h"

namespace headless::geometry {

struct Topology {
    int boundaryEdges = 0;
    /// Edges of more than two polygons, or that two polygons run through in the same direction.
    int badEdges = 0;
    int unusedPoints = 0;
    int flatPolygons = 0;
    int euler = 0;
    bool operator==(const Topology&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const Topology& t) {
    return stream << "boundary " << t.boundaryEdges << ", bad " << t.badEdges << ", unused " << t.unusedPoints
                  << ", flat " << t.flatPolygons << ", euler " << t.euler;
}

inline Topology topologyOf(const PolyMesh& mesh) {
    std::map<std::pair<int32_t, int32_t>, int> directed;
    std::set<int32_t> used;
    Topology topology;
    for (const CPolygon& polygon : mesh.polygons) {
        const auto corners = cornersOf(polygon);
        const int count = cornerCount(polygon);
        for (int i = 0; i < count; ++i) {
            const int32_t from = corners[static_cast<std::size_t>(i)];
            const int32_t to = corners[static_cast<std::size_t>((i + 1) % count)];
            ++directed[{from, to}];
            used.insert(from);
        }
        topology.flatPolygons += areaVector(mesh.points, polygon).length() > 0.0 ? 0 : 1;
    }
    int edges = 0;
    for (const auto& [edge, uses] : directed) {
        const auto opposite = directed.find({edge.second, edge.first});
        const bool paired = opposite != directed.end();
        topology.badEdges += uses > 1 ? 1 : 0;
        topology.boundaryEdges += paired ? 0 : 1;
        edges += paired && edge.first > edge.second ? 0 : 1;
    }
    topology.unusedPoints = static_cast<int>(mesh.points.size() - used.size());
    topology.euler = static_cast<int>(mesh.points.size()) - edges + static_cast<int>(mesh.polygons.size());
    return topology;
}

inline Vec3 centreOf(const PolyMesh& mesh, const CPolygon& polygon) {
    const auto corners = cornersOf(polygon);
    const auto count = static_cast<std::size_t>(cornerCount(polygon));
    Vec3 sum;
    for (std::size_t i = 0; i < count; ++i) {
        sum += mesh.points[static_cast<std::size_t>(corners[i])];
    }
    return sum * (1.0 / static_cast<double>(count));
}

inline double areaOf(const PolyMesh& mesh) {
    double area = 0.0;
    for (const CPolygon& polygon : mesh.polygons) {
        area += areaVector(mesh.points, polygon).length();
    }
    return area;
}

inline double distance(const Vector& a, const Vector& b) {
    return (Vec3(a) - Vec3(b)).length();
}

} // namespace headless::geometry
