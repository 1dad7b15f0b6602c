// SPDX-License-Identifier: MIT
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <span>

#include "headless/geometry/mesh_operations.h"

namespace headless::geometry {

namespace {

/// Kept points, hashed by the cell of a grid that is eight times as wide as the tolerance. What lies near a
/// point is in its cell, or in those of the seven on the nearer sides whose border is within the tolerance:
/// seldom any.
class PointGrid {
public:
    PointGrid(std::size_t capacity, double tolerance)
        : tolerance_(tolerance), heads_(std::bit_ceil(capacity + 1), -1) {
        next_.reserve(capacity);
    }

    /// The first kept point within the tolerance, or -1.
    int32_t find(std::span<const Vector> kept, const Vec3& p) const {
        const std::array<CellRange, 3> ranges{rangeOf(p.x), rangeOf(p.y), rangeOf(p.z)};
        int32_t found = -1;
        for (unsigned neighbour = 0; neighbour < 8; ++neighbour) {
            std::array<int64_t, 3> cell{};
            bool wanted = true;
            for (std::size_t axis = 0; axis < 3; ++axis) {
                const bool side = ((neighbour >> axis) & 1u) != 0;
                cell[axis] = side ? ranges[axis].nearby : ranges[axis].own;
                wanted = wanted && (!side || ranges[axis].nearby != ranges[axis].own);
            }
            if (wanted) {
                found = findIn(cell, kept, p, found);
            }
        }
        return found;
    }

    /// Points are added in the order of their indices; `hidden` ones are never found.
    void add(const Vec3& p, bool hidden) {
        const auto index = static_cast<int32_t>(next_.size());
        next_.push_back(-1);
        if (!hidden) {
            int32_t& head = heads_[bucketOf({rangeOf(p.x).own, rangeOf(p.y).own, rangeOf(p.z).own})];
            next_.back() = head;
            head = index;
        }
    }

private:
    /// Cells along one axis: the coordinate's own, and the next one when its border is near, else the own
    /// again.
    struct CellRange {
        int64_t own;
        int64_t nearby;
    };

    CellRange rangeOf(double x) const {
        if (tolerance_ <= 0.0) {
            const auto bits = std::bit_cast<int64_t>(x + 0.0); // -0 and 0 are one place.
            return {bits, bits};
        }
        const double width = 8.0 * tolerance_;
        const double cell = std::floor(std::clamp(x / width, -4e18, 4e18));
        const auto own = static_cast<int64_t>(cell);
        const double inside = x - cell * width;
        // The margin takes in what the division rounds off.
        const double margin = 1.001 * tolerance_;
        return {own, inside < margin ? own - 1 : inside > width - margin ? own + 1 : own};
    }

    int32_t findIn(const std::array<int64_t, 3>& cell, std::span<const Vector> kept, const Vec3& p,
                   int32_t found) const {
        for (int32_t i = heads_[bucketOf(cell)]; i >= 0; i = next_[static_cast<std::size_t>(i)]) {
            const Vec3 offset = Vec3(kept[static_cast<std::size_t>(i)]) - p;
            if (dot(offset, offset) <= tolerance_ * tolerance_ && (found < 0 || i < found)) {
                found = i;
            }
        }
        return found;
    }

    std::size_t bucketOf(const std::array<int64_t, 3>& cell) const {
        uint64_t hash = 0;
        for (const int64_t part : cell) {
            hash = (hash ^ static_cast<uint64_t>(part)) * 0x9E3779B97F4A7C15u;
            hash ^= hash >> 29;
        }
        hash *= 0xBF58476D1CE4E5B9u;
        return (hash ^ (hash >> 32)) & (heads_.size() - 1);
    }

    double tolerance_;
    std::vector<int32_t> heads_;
    std::vector<int32_t> next_;
};

/// Takes out corners that are equal to the one before. False when no polygon remains.
bool collapse(CPolygon& polygon, UVWStruct& uvw) {
    const std::array<int32_t, 4> indices = cornersOf(polygon);
    const std::array<Vector, 4> coords{uvw.a, uvw.b, uvw.c, uvw.d};
    std::array<std::size_t, 4> kept{};
    std::size_t count = 0;
    for (std::size_t i = 0; i < 4; ++i) {
        if (indices[i] != indices[(i + 3) % 4]) {
            kept[count++] = i;
        }
    }
    if (count < 3 || indices[0] == indices[2] || indices[1] == indices[3]) {
        return false;
    }
    if (count == 3) {
        kept[3] = kept[2];
    }
    polygon = {indices[kept[0]], indices[kept[1]], indices[kept[2]], indices[kept[3]]};
    uvw = {coords[kept[0]], coords[kept[1]], coords[kept[2]], coords[kept[3]]};
    return true;
}

std::vector<int32_t> mergePoints(std::vector<Vector>& points, double tolerance) {
    std::vector<int32_t> map(points.size());
    std::vector<Vector> kept;
    PointGrid grid(points.size(), tolerance);
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Vec3 p(points[i]);
        const bool finite = p.isFinite();
        map[i] = finite ? grid.find(kept, p) : -1;
        if (map[i] < 0) {
            map[i] = static_cast<int32_t>(kept.size());
            grid.add(p, !finite);
            kept.push_back(points[i]);
        }
    }
    points = std::move(kept);
    return map;
}

} // namespace

WeldResult weldPoints(PolyMesh& mesh, float tolerance) {
    WeldResult result;
    result.pointMap = mergePoints(
        mesh.points, std::isfinite(tolerance) ? std::max(0.0, static_cast<double>(tolerance)) : 0.0);
    const bool hasUVW = !mesh.uvw.empty();
    std::size_t count = 0;
    for (std::size_t i = 0; i < mesh.polygons.size(); ++i) {
        const auto at = [&](int32_t index) { return result.pointMap[static_cast<std::size_t>(index)]; };
        const CPolygon& old = mesh.polygons[i];
        CPolygon polygon(at(old.a), at(old.b), at(old.c), at(old.d));
        UVWStruct uvw = hasUVW ? mesh.uvw[i] : UVWStruct();
        const bool remains = collapse(polygon, uvw);
        result.polygonMap.push_back(remains ? static_cast<int32_t>(count) : -1);
        if (remains) {
            mesh.polygons[count] = polygon;
            if (hasUVW) {
                mesh.uvw[count] = uvw;
            }
            ++count;
        }
    }
    mesh.polygons.resize(count);
    if (hasUVW) {
        mesh.uvw.resize(count);
    }
    return result;
}

} // namespace headless::geometry
