// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

#include "foundation/trigonometry.h"
#include "headless/geometry/lathe.h"
#include "headless/geometry/primitives.h"
#include "headless/geometry/subdivided_solid.h"
#include "headless/geometry/uv_projection.h"

namespace headless::geometry {

namespace {

/// Rows from the upper pole to the lower, or to the equator, spaced evenly by latitude.
PolyMesh makeRowSphere(double radius, int segments, bool upperHalf) {
    const int rowCount = upperHalf ? std::max(1, segments / 4) : std::max(2, segments / 2);
    const double lastV = upperHalf ? 0.5 : 1.0;
    Lathe lathe(segments, rowCount + 1);
    int previous = lathe.addPole(radius);
    for (int i = 1; i <= rowCount; ++i) {
        const double v = lastV * i / rowCount;
        const double y = v == 0.5 ? 0.0 : radius * Quenza::cosine(std::numbers::pi * v);
        const int row =
            v == 1.0 ? lathe.addPole(y) : lathe.addRing(radius * Quenza::sine(std::numbers::pi * v), y);
        lathe.addWall(previous, row, lastV * (i - 1) / rowCount, v);
        previous = row;
    }
    return lathe.take(Axis::PlusY);
}

/// Pieces that an edge is divided into, so that about `segments` of them go around the sphere.
int divisionsOf(int segments, double edgeAngle) {
    return std::max(1, static_cast<int>(std::lround(segments * edgeAngle / (2.0 * std::numbers::pi))));
}

PolyMesh makeHexahedron(int segments) {
    const int divisions = divisionsOf(segments, std::numbers::pi / 2.0);
    PolyMesh mesh = makeCube({{2.0f, 2.0f, 2.0f}, divisions, divisions, divisions});
    // Equal angles instead of equal lengths: else the cells in the corners would be much the smallest.
    const auto warp = [](double x) { return std::tan(x * std::numbers::pi / 4.0); };
    for (Vector& point : mesh.points) {
        const Vec3 p(point);
        point = Vec3(warp(p.x), warp(p.y), warp(p.z)).normalized().toVector();
    }
    return mesh;
}

PolyMesh makeUnitSolid(SphereType type, int segments) {
    switch (type) {
    case SphereType::Tetrahedron:
        return subdivideOnSphere(tetrahedron(), divisionsOf(segments, std::acos(-1.0 / 3.0)));
    case SphereType::Octahedron:
        return subdivideOnSphere(octahedron(), divisionsOf(segments, std::numbers::pi / 2.0));
    case SphereType::Icosahedron:
        return subdivideOnSphere(icosahedron(), divisionsOf(segments, std::atan(2.0)));
    default:
        return makeHexahedron(segments);
    }
}

} // namespace

PolyMesh makeSphere(const SphereParameters& parameters) {
    const double radius = validLength(parameters.radius);
    const int segments = std::clamp(parameters.segments, 3, maxSegments);
    if (radius == 0.0) {
        return {};
    }
    switch (parameters.type) {
    case SphereType::Tetrahedron:
    case SphereType::Hexahedron:
    case SphereType::Octahedron:
    case SphereType::Icosahedron: {
        PolyMesh mesh = makeUnitSolid(parameters.type, segments);
        mesh.uvw = generateUVW(Projection::Spherical, mesh.points, mesh.polygons, Matrix());
        for (Vector& point : mesh.points) {
            point = (Vec3(point).normalized() * radius).toVector();
        }
        return mesh;
    }
    case SphereType::Hemisphere:
        return makeRowSphere(radius, segments, true);
    case SphereType::Standard:
        break;
    }
    return makeRowSphere(radius, segments, false);
}

} // namespace headless::geometry
