// SPDX-License-Identifier: MIT
#include "headless/geometry/phong_normals.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "foundation/parallel.h"
#include "foundation/trigonometry.h"
#include "headless/geometry/vertex_corners.h"

namespace headless::geometry {

namespace {

using Corner = VertexCorners::Corner;

std::vector<Vector> faceNormals(std::span<const Vector> points, std::span<const CPolygon> polygons) {
    std::vector<Vector> normals(polygons.size());
    Quenza::parallelFor(polygons.size(), 32768, [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            normals[i] = areaVector(points, polygons[i]).normalized().toVector();
        }
    });
    return normals;
}

/// The polygon's edges that meet in a corner, by number, and the points at their other ends.
struct CornerEdges {
    int edgeBefore;
    int edgeAfter;
    int32_t before;
    int32_t after;
};

CornerEdges edgesOf(const CPolygon& polygon, int place) {
    const std::array<int32_t, 4> indices = cornersOf(polygon);
    const int last = cornerCount(polygon) - 1;
    const int before = place == 0 ? last : place - 1;
    const int after = place == last ? 0 : place + 1;
    return {place == 0 ? 3 : place - 1, place == last ? 3 : place, indices[static_cast<std::size_t>(before)],
            indices[static_cast<std::size_t>(after)]};
}

/// Works on one point after the other; keeps its buffers between them.
class PointSmoother {
public:
    PointSmoother(std::span<const Vector> points, std::span<const CPolygon> polygons,
                  std::span<const Vector> normals, const PhongSettings& settings)
        : points_(points), polygons_(polygons), normals_(normals), brokenEdges_(settings.brokenEdges),
          // Rounding must not break the edges of a cube at a limit of 90 degrees.
          lowestCosine_(settings.angleLimited
                            ? Quenza::cosine(std::clamp(settings.angleLimit, 0.0, std::numbers::pi)) - 1e-6
                            : -2.0) {}

    /// Writes the normals of all corners at a point into `out`, four per polygon.
    void smooth(std::size_t point, std::span<const Corner> corners, std::span<Vector> out) {
        if (corners.size() > 1) {
            connect(point, corners);
            average(point, corners, out);
            return;
        }
        for (const Corner corner : corners) {
            out[corner] = normals_[corner / 4];
        }
    }

private:
    /// An edge at the point as one of its polygons sees it.
    struct Spoke {
        int32_t otherEnd;
        uint32_t corner; ///< index among the corners of the point
        bool broken;
    };

    void connect(std::size_t point, std::span<const Corner> corners) {
        parents_.resize(corners.size());
        spokes_.clear();
        for (uint32_t i = 0; i < corners.size(); ++i) {
            parents_[i] = i;
            const std::size_t polygon = corners[i] / 4;
            if (normals_[polygon] == Vector()) {
                continue;
            }
            const CornerEdges edges = edgesOf(polygons_[polygon], static_cast<int>(corners[i] % 4));
            const unsigned broken = brokenEdges_.empty() ? 0u : brokenEdges_[polygon];
            spokes_.push_back({edges.before, i, ((broken >> edges.edgeBefore) & 1u) != 0});
            spokes_.push_back({edges.after, i, ((broken >> edges.edgeAfter) & 1u) != 0});
        }
        std::sort(spokes_.begin(), spokes_.end(), [](const Spoke& a, const Spoke& b) {
            return a.otherEnd != b.otherEnd ? a.otherEnd < b.otherEnd : a.corner < b.corner;
        });
        for (std::size_t begin = 0, end = 0; begin < spokes_.size(); begin = end) {
            bool broken = spokes_[begin].otherEnd == static_cast<int32_t>(point);
            for (end = begin; end < spokes_.size() && spokes_[end].otherEnd == spokes_[begin].otherEnd;
                 ++end) {
                broken |= spokes_[end].broken;
            }
            if (!broken) {
                connectAcross(corners, begin, end);
            }
        }
    }

    /// Joins the polygons around one edge. Where more than two meet, each pair is tried, but no more than a
    /// few neighbours in order for each, so that thousands of polygons on one edge take no quadratic time.
    void connectAcross(std::span<const Corner> corners, std::size_t begin, std::size_t end) {
        constexpr std::size_t reach = 8;
        for (std::size_t i = begin; i < end; ++i) {
            const Vec3 normal(normals_[corners[spokes_[i].corner] / 4]);
            for (std::size_t k = i + 1; k < std::min(end, i + reach); ++k) {
                if (dot(normal, normals_[corners[spokes_[k].corner] / 4]) >= lowestCosine_) {
                    parents_[rootOf(spokes_[k].corner)] = rootOf(spokes_[i].corner);
                }
            }
        }
    }

    uint32_t rootOf(uint32_t i) {
        while (parents_[i] != i) {
            parents_[i] = parents_[parents_[i]];
            i = parents_[i];
        }
        return i;
    }

    void average(std::size_t point, std::span<const Corner> corners, std::span<Vector> out) {
        sums_.assign(corners.size(), {});
        for (uint32_t i = 0; i < corners.size(); ++i) {
            const std::size_t polygon = corners[i] / 4;
            if (normals_[polygon] != Vector()) {
                sums_[rootOf(i)] += Vec3(normals_[polygon]) * angleAt(point, corners[i]);
            }
        }
        for (uint32_t i = 0; i < corners.size(); ++i) {
            const std::size_t polygon = corners[i] / 4;
            const Vec3& sum = sums_[rootOf(i)];
            const bool usable = normals_[polygon] != Vector() && sum.length() > 1e-6;
            out[corners[i]] = usable ? sum.normalized().toVector() : normals_[polygon];
        }
    }

    double angleAt(std::size_t point, Corner corner) const {
        const CornerEdges edges = edgesOf(polygons_[corner / 4], static_cast<int>(corner % 4));
        const Vec3 origin(points_[point]);
        const Vec3 before = Vec3(points_[static_cast<std::size_t>(edges.before)]) - origin;
        const Vec3 after = Vec3(points_[static_cast<std::size_t>(edges.after)]) - origin;
        // The arc tangent's last digits are each C library's own. They go, so that normals, and with them the
        // names of mesh files, are the same on every system: what stays is 2^-40.
        constexpr double GRAIN = 4096.0;
        return (std::atan2(cross(before, after).length(), dot(before, after)) + GRAIN) - GRAIN;
    }

    std::span<const Vector> points_;
    std::span<const CPolygon> polygons_;
    std::span<const Vector> normals_;
    std::span<const uint8_t> brokenEdges_;
    double lowestCosine_;
    std::vector<Spoke> spokes_;
    std::vector<uint32_t> parents_;
    std::vector<Vec3> sums_;
};

} // namespace

std::vector<Vector> computePhongNormals(std::span<const Vector> points, std::span<const CPolygon> polygons,
                                        const PhongSettings& settings) {
    std::vector<Vector> result(polygons.size() * 4);
    computePhongNormals(points, polygons, settings, result);
    return result;
}

void computePhongNormals(std::span<const Vector> points, std::span<const CPolygon> polygons,
                         const PhongSettings& settings, std::span<Vector> result) {
    const std::vector<Vector> normals = faceNormals(points, polygons);
    const VertexCorners corners(points.size(), polygons);
    std::fill(result.begin(), result.end(), Vector());
    Quenza::parallelFor(points.size(), 8192, [&](std::size_t begin, std::size_t end) {
        PointSmoother smoother(points, polygons, normals, settings);
        for (std::size_t point = begin; point < end; ++point) {
            smoother.smooth(point, corners.at(point), result);
        }
    });
    for (std::size_t i = 0; i < polygons.size(); ++i) {
        if (polygons[i].IsTriangle()) {
            result[i * 4 + 3] = result[i * 4 + 2];
        }
    }
}

std::vector<uint8_t> brokenEdgeBytes(std::size_t polygonCount, std::span<const int64_t> edges) {
    std::vector<uint8_t> bytes(polygonCount);
    for (const int64_t edge : edges) {
        if (edge >= 0 && static_cast<uint64_t>(edge) < polygonCount * 4) {
            bytes[static_cast<std::size_t>(edge / 4)] |= static_cast<uint8_t>(1u << (edge % 4));
        }
    }
    return bytes;
}

} // namespace headless::geometry
