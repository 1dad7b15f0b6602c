// SPDX-License-Identifier: MIT
#include "headless/geometry/uv_projection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "foundation/parallel.h"
#include "headless/geometry/axis_frame.h"

namespace headless::geometry {

namespace {

struct TexCoord {
    double u;
    double v;
};

using Corners = std::array<Vec3, 4>;
using TexCoords = std::array<TexCoord, 4>;

/// The angle around the Y axis as a part of the whole turn, [0, 1]; NaN on the axis.
double turnOf(const Vec3& p) {
    if (p.x == 0.0 && p.z == 0.0) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    const double turn = std::atan2(p.z, p.x) / (2.0 * std::numbers::pi);
    return turn < 0.0 ? turn + 1.0 : turn;
}

/// Radius below which a corner counts as lying on the axis, as a part of the polygon's own distance from it.
/// Rounding in the tag's matrix moves poles by about this much.
constexpr double axisTolerance = 1e-6;

/// u of the corners of one polygon around the Y axis: continuous from corner to corner, beginning in [0, 1).
/// Corners on the axis, which have no angle, take the mean of their neighbours.
void wrapAround(const Corners& corners, int count, TexCoords& out) {
    double reach = 0.0;
    for (int i = 0; i < count; ++i) {
        const Vec3& p = corners[static_cast<std::size_t>(i)];
        reach = std::max(reach, std::hypot(p.x, p.z));
    }
    double previous = std::numeric_limits<double>::quiet_NaN();
    double lowest = std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        const bool onAxis = std::hypot(corners[i].x, corners[i].z) <= reach * axisTolerance;
        double turn = onAxis ? std::numeric_limits<double>::quiet_NaN() : turnOf(corners[i]);
        if (std::isfinite(turn)) {
            turn += std::isfinite(previous) ? std::round(previous - turn) : 0.0;
            previous = turn;
            lowest = std::min(lowest, turn);
        }
        out[i].u = turn;
    }
    // A polygon that begins at the seam must not begin at 0.99999 because of rounding.
    const double shift = std::isfinite(lowest) ? std::floor(lowest + 1e-5) : 0.0;
    TexCoords wrapped = out;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        if (std::isfinite(out[i].u)) {
            wrapped[i].u = out[i].u - shift;
            continue;
        }
        const auto n = static_cast<std::size_t>(count);
        const double before = out[(i + n - 1) % n].u - shift;
        const double after = out[(i + 1) % n].u - shift;
        wrapped[i].u = std::isfinite(before) && std::isfinite(after) ? (before + after) / 2.0
                       : std::isfinite(before)                       ? before
                                                                     : after;
    }
    out = wrapped;
}

void projectSpherical(const Corners& corners, int count, TexCoords& out) {
    wrapAround(corners, count, out);
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        const Vec3& p = corners[i];
        out[i].v = std::atan2(std::hypot(p.x, p.z), p.y) / std::numbers::pi;
    }
}

void projectCylindrical(const Corners& corners, int count, TexCoords& out) {
    wrapAround(corners, count, out);
    for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
        out[i].v = (1.0 - corners[i].y) / 2.0;
    }
}

/// `mirrored`: the way into texture space has turned the faces inside out.
void projectCubic(const Corners& corners, bool mirrored, TexCoords& out) {
    const Vec3 n = cross(corners[2] - corners[0], corners[3] - corners[1]) * (mirrored ? -1.0 : 1.0);
    const Vec3 size(std::abs(n.x), std::abs(n.y), std::abs(n.z));
    Axis axis = n.z > 0.0 ? Axis::PlusZ : Axis::MinusZ;
    if (size.x > size.z && size.x >= size.y) {
        axis = n.x > 0.0 ? Axis::PlusX : Axis::MinusX;
    } else if (size.y > size.z) {
        axis = n.y > 0.0 ? Axis::PlusY : Axis::MinusY;
    }
    const AxisFrame& frame = frameOf(axis);
    for (std::size_t i = 0; i < 4; ++i) {
        out[i] = {(1.0 + dot(corners[i], frame.right)) / 2.0, (1.0 - dot(corners[i], frame.up)) / 2.0};
    }
}

TexCoord projectFlat(const Vec3& p, double depthShift) {
    return {(1.0 + p.x + p.z * depthShift) / 2.0, (1.0 - p.y + p.z * depthShift) / 2.0};
}

TexCoord projectShrinkWrapped(const Vec3& p) {
    const double ring = std::hypot(p.x, p.z);
    const double distance = std::atan2(ring, p.y) / std::numbers::pi / 2.0;
    // The lower pole is the whole rim; any of its points will do.
    const double scale = ring > 0.0 ? distance / ring : 0.0;
    return ring > 0.0 ? TexCoord{0.5 + p.x * scale, 0.5 - p.z * scale} : TexCoord{0.5 + distance, 0.5};
}

class CameraProjector {
public:
    explicit CameraProjector(const ProjectionCamera& camera)
        : fromObject_(camera.fromObject), parallel_(camera.parallel),
          scale_(camera.parallel
                     ? 1.0 / static_cast<double>(camera.parallelWidth)
                     : static_cast<double>(camera.focalLength) / static_cast<double>(camera.apertureWidth)),
          aspect_(static_cast<double>(camera.aspect)) {}

    TexCoord project(const Vec3& objectPoint) const {
        const Vec3 p = fromObject_.point(objectPoint);
        // What lies beside or behind the camera has no place in the picture; it's kept far outside of it.
        const double nearest = 1e-3 * p.length();
        const double scale = parallel_ ? scale_ : scale_ / std::max(p.z, nearest);
        return {0.5 + p.x * scale, 0.5 - p.y * scale * aspect_};
    }

private:
    Affine fromObject_;
    bool parallel_;
    double scale_;
    double aspect_;
};

Vector toUVW(const TexCoord& t) {
    constexpr double limit = 1e6;
    if (!std::isfinite(t.u) || !std::isfinite(t.v)) {
        return {};
    }
    return Vec3(std::clamp(t.u, -limit, limit), std::clamp(t.v, -limit, limit), 0.0).toVector();
}

/// `project(corners, count, out)` fills the first `count` texture coordinates, or all four.
template <class Project>
std::vector<UVWStruct> projectAll(std::span<const Vector> points, std::span<const CPolygon> polygons,
                                  const Affine& transform, const Project& project) {
    std::vector<UVWStruct> result(polygons.size());
    Quenza::parallelFor(polygons.size(), 16384, [&](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i) {
            const std::array<int32_t, 4> indices = cornersOf(polygons[i]);
            Corners corners;
            for (std::size_t c = 0; c < 4; ++c) {
                corners[c] = transform.point(points[static_cast<std::size_t>(indices[c])]);
            }
            TexCoords coords{};
            const int count = cornerCount(polygons[i]);
            project(corners, count, coords);
            const Vector third = toUVW(coords[2]);
            result[i] = {toUVW(coords[0]), toUVW(coords[1]), third, count == 3 ? third : toUVW(coords[3])};
        }
    });
    return result;
}

/// The same for projections that look at one corner alone.
template <class Project>
std::vector<UVWStruct> projectPoints(std::span<const Vector> points, std::span<const CPolygon> polygons,
                                     const Affine& transform, const Project& project) {
    return projectAll(points, polygons, transform, [&](const Corners& corners, int, TexCoords& out) {
        std::transform(corners.begin(), corners.end(), out.begin(), project);
    });
}

} // namespace

std::vector<UVWStruct> generateUVW(Projection projection, std::span<const Vector> points,
                                   std::span<const CPolygon> polygons, const Matrix& objectToTexture,
                                   std::span<const UVWStruct> existing,
                                   const std::optional<ProjectionCamera>& camera) {
    const Affine transform(objectToTexture);
    switch (projection) {
    case Projection::Spherical:
        return projectAll(points, polygons, transform, projectSpherical);
    case Projection::Cylindrical:
        return projectAll(points, polygons, transform, projectCylindrical);
    case Projection::Cubic:
        return projectAll(
            points, polygons, transform,
            [mirrored = transform.determinant() < 0.0](const Corners& corners, int, TexCoords& out) {
                projectCubic(corners, mirrored, out);
            });
    case Projection::Flat:
        return projectPoints(points, polygons, transform, [](const Vec3& p) { return projectFlat(p, 0.0); });
    case Projection::Spatial:
        return projectPoints(points, polygons, transform, [](const Vec3& p) { return projectFlat(p, 1.0); });
    case Projection::ShrinkWrapping:
        return projectPoints(points, polygons, transform, projectShrinkWrapped);
    case Projection::UVWMapping:
        return existing.size() == polygons.size() ? std::vector(existing.begin(), existing.end())
                                                  : std::vector<UVWStruct>();
    case Projection::Frontal:
    case Projection::CameraMapping:
        if (camera) {
            const CameraProjector projector(*camera);
            return projectPoints(points, polygons, Affine(),
                                 [&](const Vec3& p) { return projector.project(p); });
        }
        break;
    }
    return {};
}

} // namespace headless::geometry
