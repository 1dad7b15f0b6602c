// SPDX-License-Identifier: MIT
#include "headless/geometry/lathe.h"

#include "foundation/trigonometry.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace headless::geometry {

double validLength(float length) {
    return std::isfinite(length) && length > 0.0f ? static_cast<double>(length) : 0.0;
}

void orient(PolyMesh& mesh, Axis orientation) {
    const auto number = static_cast<std::size_t>(orientation);
    if (orientation == Axis::PlusY || number >= axisFrames.size()) {
        return;
    }
    const AxisFrame& frame = frameOf(orientation);
    for (Vector& point : mesh.points) {
        const Vec3 p(point);
        point = (frame.right * p.x + frame.normal * p.y + frame.up * p.z).toVector();
    }
}

Lathe::Lathe(int segments, int rows) : segments_(segments) {
    const std::size_t count = static_cast<std::size_t>(segments) * static_cast<std::size_t>(rows);
    mesh_.points.reserve(count);
    mesh_.polygons.reserve(count);
    mesh_.uvw.reserve(count);
    for (int i = 0; i <= segments; ++i) {
        const double angle = 2.0 * std::numbers::pi * (i % segments) / segments;
        cosines_.push_back(Quenza::cosine(angle));
        sines_.push_back(Quenza::sine(angle));
    }
}

int Lathe::addRing(double radius, double y) {
    rows_.push_back({static_cast<int32_t>(mesh_.points.size()), radius, false});
    for (std::size_t i = 0; i < static_cast<std::size_t>(segments_); ++i) {
        mesh_.points.push_back(Vec3(cosines_[i] * radius, y, sines_[i] * radius).toVector());
    }
    return static_cast<int>(rows_.size()) - 1;
}

int Lathe::addPole(double y) {
    rows_.push_back({static_cast<int32_t>(mesh_.points.size()), 0.0, true});
    mesh_.points.push_back(Vec3(0.0, y, 0.0).toVector());
    return static_cast<int>(rows_.size()) - 1;
}

/// `texCoord(row, i)` is called with the angle's number, for a pole with the middle of the segment.
template <class TexCoord>
void Lathe::addBand(int from, int to, const TexCoord& texCoord) {
    const Row upper = rows_[static_cast<std::size_t>(from)];
    const Row lower = rows_[static_cast<std::size_t>(to)];
    for (int i = 0; i < segments_; ++i) {
        const int next = (i + 1) % segments_;
        const double middle = i + 0.5;
        if (upper.pole) {
            mesh_.polygons.emplace_back(upper.firstPoint, lower.firstPoint + next, lower.firstPoint + i);
            const Vector last = texCoord(lower, i);
            mesh_.uvw.push_back({texCoord(upper, middle), texCoord(lower, i + 1), last, last});
        } else if (lower.pole) {
            mesh_.polygons.emplace_back(upper.firstPoint + i, upper.firstPoint + next, lower.firstPoint);
            const Vector last = texCoord(lower, middle);
            mesh_.uvw.push_back({texCoord(upper, i), texCoord(upper, i + 1), last, last});
        } else {
            mesh_.polygons.emplace_back(upper.firstPoint + i, upper.firstPoint + next,
                                        lower.firstPoint + next, lower.firstPoint + i);
            mesh_.uvw.push_back(
                {texCoord(upper, i), texCoord(upper, i + 1), texCoord(lower, i + 1), texCoord(lower, i)});
        }
    }
}

void Lathe::addWall(int from, int to, double vFrom, double vTo) {
    const int32_t firstPoint = rows_[static_cast<std::size_t>(from)].firstPoint;
    addBand(from, to, [&](const Row& row, double i) {
        return Vec3(i / segments_, row.firstPoint == firstPoint ? vFrom : vTo, 0.0).toVector();
    });
}

void Lathe::addCap(int from, int to, double radius, bool upward) {
    const double up = upward ? 0.5 : -0.5;
    addBand(from, to, [&](const Row& row, double i) {
        if (row.pole) {
            return Vector(0.5f, 0.5f, 0.0f);
        }
        const auto index = static_cast<std::size_t>(i);
        const double scale = row.radius / radius;
        return Vec3(0.5 + 0.5 * scale * cosines_[index], 0.5 - up * scale * sines_[index], 0.0).toVector();
    });
}

PolyMesh Lathe::take(Axis orientation) {
    orient(mesh_, orientation);
    rows_.clear();
    return std::exchange(mesh_, {});
}

} // namespace headless::geometry
