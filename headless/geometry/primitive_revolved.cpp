// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <numbers>

#include "foundation/trigonometry.h"
#include "headless/geometry/lathe.h"
#include "headless/geometry/primitives.h"

namespace headless::geometry {

namespace {

int rotationSegmentsOf(int segments) {
    return std::clamp(segments, 3, maxSegments);
}

int rowSegmentsOf(int segments) {
    return std::clamp(segments, 1, maxRowSegments);
}

/// Rings from one circle of the profile to another, both of which exist already, with walls between them.
void addWalls(Lathe& lathe, int from, Vec3 start, int to, Vec3 end, int segments) {
    int previous = from;
    for (int i = 1; i <= segments; ++i) {
        const double t = static_cast<double>(i) / segments;
        const Vec3 at = start + (end - start) * t;
        const int row = i == segments ? to : lathe.addRing(at.x, at.y);
        lathe.addWall(previous, row, (i - 1.0) / segments, t);
        previous = row;
    }
}

/// A flat band between two existing rows. `outerRadius` is the one that the texture is laid around.
void addCapRows(Lathe& lathe, int from, double fromRadius, int to, double toRadius, double y, int segments,
                bool upward) {
    const double outerRadius = std::max(fromRadius, toRadius);
    int previous = from;
    for (int i = 1; i <= segments; ++i) {
        const double radius = fromRadius + (toRadius - fromRadius) * i / segments;
        const int row = i == segments ? to : lathe.addRing(radius, y);
        lathe.addCap(previous, row, outerRadius, upward);
        previous = row;
    }
}

struct FrustumShape {
    double topRadius;
    double bottomRadius;
    double height;
    int heightSegments;
    int capSegments; ///< 0 for none
};

/// Cylinder and cone: a wall between two circles, of which one may be a point, and discs over the open ends.
PolyMesh makeFrustum(const FrustumShape& shape, int rotationSegments, Axis orientation) {
    const double top = shape.height / 2.0;
    const bool wall = shape.height > 0.0;
    const bool topCap = shape.capSegments > 0 && shape.topRadius > 0.0;
    const bool bottomCap = shape.capSegments > 0 && shape.bottomRadius > 0.0;
    if ((shape.topRadius == 0.0 && shape.bottomRadius == 0.0) || (!wall && !topCap && !bottomCap)) {
        return {};
    }
    Lathe lathe(rotationSegments, shape.heightSegments + 2 * shape.capSegments + 1);
    const auto addEnd = [&](double radius, double y) {
        return radius > 0.0 ? lathe.addRing(radius, y) : lathe.addPole(y);
    };
    const int topRow = wall || topCap ? addEnd(shape.topRadius, top) : -1;
    const int bottomRow = wall || bottomCap ? addEnd(shape.bottomRadius, -top) : -1;
    if (topCap) {
        addCapRows(lathe, lathe.addPole(top), 0.0, topRow, shape.topRadius, top, shape.capSegments, true);
    }
    if (wall) {
        addWalls(lathe, topRow, {shape.topRadius, top, 0.0}, bottomRow, {shape.bottomRadius, -top, 0.0},
                 shape.heightSegments);
    }
    if (bottomCap) {
        addCapRows(lathe, bottomRow, shape.bottomRadius, lathe.addPole(-top), 0.0, -top, shape.capSegments,
                   false);
    }
    return lathe.take(orientation);
}

} // namespace

PolyMesh makeDisc(const DiscParameters& parameters) {
    const double outer = validLength(parameters.outerRadius);
    const double inner = validLength(parameters.innerRadius);
    if (inner >= outer) {
        return {};
    }
    const int discSegments = rowSegmentsOf(parameters.discSegments);
    Lathe lathe(rotationSegmentsOf(parameters.rotationSegments), discSegments + 1);
    const int innerRow = inner > 0.0 ? lathe.addRing(inner, 0.0) : lathe.addPole(0.0);
    const int outerRow = lathe.addRing(outer, 0.0);
    addCapRows(lathe, innerRow, inner, outerRow, outer, 0.0, discSegments, true);
    return lathe.take(parameters.orientation);
}

PolyMesh makeCylinder(const CylinderParameters& parameters) {
    const double radius = validLength(parameters.radius);
    const FrustumShape shape{radius, radius, validLength(parameters.height),
                             rowSegmentsOf(parameters.heightSegments),
                             parameters.caps ? rowSegmentsOf(parameters.capSegments) : 0};
    return makeFrustum(shape, rotationSegmentsOf(parameters.rotationSegments), parameters.orientation);
}

PolyMesh makeCone(const ConeParameters& parameters) {
    const FrustumShape shape{validLength(parameters.topRadius), validLength(parameters.bottomRadius),
                             validLength(parameters.height), rowSegmentsOf(parameters.heightSegments),
                             parameters.caps ? rowSegmentsOf(parameters.capSegments) : 0};
    return makeFrustum(shape, rotationSegmentsOf(parameters.rotationSegments), parameters.orientation);
}

PolyMesh makeTube(const TubeParameters& parameters) {
    const double outer = validLength(parameters.outerRadius);
    const double inner = validLength(parameters.innerRadius);
    const double height = validLength(parameters.height);
    const int capSegments = rowSegmentsOf(parameters.capSegments);
    const int heightSegments = rowSegmentsOf(parameters.heightSegments);
    const int rotationSegments = rotationSegmentsOf(parameters.rotationSegments);
    if (inner == 0.0) {
        return makeFrustum({outer, outer, height, heightSegments, capSegments}, rotationSegments,
                           parameters.orientation);
    }
    if (inner >= outer) {
        return {};
    }
    const double top = height / 2.0;
    Lathe lathe(rotationSegments, 2 * (heightSegments + capSegments));
    const int outerTop = lathe.addRing(outer, top);
    const int outerBottom = lathe.addRing(outer, -top);
    const int innerBottom = lathe.addRing(inner, -top);
    const int innerTop = lathe.addRing(inner, top);
    addCapRows(lathe, innerTop, inner, outerTop, outer, top, capSegments, true);
    addCapRows(lathe, outerBottom, outer, innerBottom, inner, -top, capSegments, false);
    if (height > 0.0) {
        addWalls(lathe, outerTop, {outer, top, 0.0}, outerBottom, {outer, -top, 0.0}, heightSegments);
        addWalls(lathe, innerBottom, {inner, -top, 0.0}, innerTop, {inner, top, 0.0}, heightSegments);
    }
    return lathe.take(parameters.orientation);
}

PolyMesh makeTorus(const TorusParameters& parameters) {
    const double ring = validLength(parameters.ringRadius);
    const double pipe = validLength(parameters.pipeRadius);
    const int pipeSegments = rotationSegmentsOf(parameters.pipeSegments);
    if (ring == 0.0 || pipe == 0.0) {
        return {};
    }
    Lathe lathe(rotationSegmentsOf(parameters.ringSegments), pipeSegments);
    std::vector<int> rows;
    for (int i = 0; i < pipeSegments; ++i) {
        const double angle = std::numbers::pi - 2.0 * std::numbers::pi * i / pipeSegments;
        const double radius = ring + pipe * Quenza::cosine(angle);
        const double y = pipe * Quenza::sine(angle);
        rows.push_back(std::abs(radius) > 1e-9 * ring ? lathe.addRing(radius, y) : lathe.addPole(y));
    }
    rows.push_back(rows.front());
    for (int i = 0; i < pipeSegments; ++i) {
        const auto row = static_cast<std::size_t>(i);
        lathe.addWall(rows[row], rows[row + 1], static_cast<double>(i) / pipeSegments,
                      (i + 1.0) / pipeSegments);
    }
    return lathe.take(parameters.orientation);
}

} // namespace headless::geometry
