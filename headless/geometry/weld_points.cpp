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

/// Kept points, hashed by the cell of a grid that is twice as wide as the tolerance: what lies near a point
/// is in its cell or in one of the seven on the nearer sides.
class PointGrid {
public:
    PointGrid(std::size_t capacity, double tolerance)
        : cellSize_(2.0 * tolerance), squaredTolerance_(tolerance * tolerance),
          heads_(std::bit_ceil(capacity + 1), -1) {}

    /// The first kept point within the tolerance, or -1.
    int32_t find(std::span<const Vector> kept, const Vec3& p) const {
        int32_t found = -1;
        for (int neighbour = 0; neighbour < (cellSize_ > 0.0 ? 8 : 1); ++neighbour) {
            const Vec3 cell(nearCell(p.x, neighbour & 1), nearCell(p.y, neighbour & 2),
                            nearCell(p.z, neighbour & 4));
            for (int32_t i = heads_[bucketOf(cell)]; i >= 0; i = next_[static_cast<std::size_t>(i)]) {
                const Vec3 offset = Vec3(kept[static_cast<std::size_t>(i)]) - p;
                if (dot(offset, offset) <= squaredTolerance_ && (found < 0 || i < found)) {
                    found = i;
                }
            }
        }
        return found;
    }

    /// Points are added in the order of their indices; `hidden` ones are never found.
    void add(const Vec3& p, bool hidden) {
        const auto index = static_cast<int32_t>(next_.size());
        next_.push_back(-1);
        if (!hidden) {
            int32_t& head = heads_[bucketOf({nearCell(p.x, 0), nearCell(p.y, 0), nearCell(p.z, 0)})];
            next_.back() = head;
            head = index;
        }
    }

private:
    /// The coordinate's own cell, or the next one on the nearer side.
    double nearCell(double x, int nearerSide) const {
        if (cellSize_ <= 0.0) {
            return x + 0.0; // -0 and 0 are one place.
        }
        const double cell = std::floor(x / cellSize_);
        const double side = x / cellSize_ - cell < 0.5 ? -1.0 : 1.0;
        return nearerSide != 0 ? cell + side : cell;
    }

    std::size_t bucketOf(const Vec3& cell) const {
        uint64_t hash = 0;
        for (const double part : {cell.x, cell.y, cell.z}) {
            hash = (hash ^ std::bit_cast<uint64_t>(part)) * 0x9E3779B97F4A7C15u;
            hash ^= hash >> 32;
        }
        return hash & (heads_.size() - 1);
    }

    double cellSize_;
    double squaredTolerance_;
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
