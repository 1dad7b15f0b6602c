// SPDX-License-Identifier: MIT
#include "headless/geometry/primitives.h"

#include <functional>
#include <limits>
#include <numbers>
#include <string>

#include <gtest/gtest.h>

#include "headless/geometry_checks.h"

namespace headless::geometry {
namespace {

using Outward = std::function<Vec3(const Vec3&)>;

Vec3 fromOrigin(const Vec3& p) {
    return p;
}

Vec3 upward(const Vec3&) {
    return {0.0, 1.0, 0.0};
}

Outward fromRing(double ringRadius) {
    return [=](const Vec3& p) {
        const double around = std::hypot(p.x, p.z);
        return p - Vec3(p.x, 0.0, p.z) * (ringRadius / around);
    };
}

struct Case {
    std::string name;
    PolyMesh mesh;
    Topology topology;
    Outward outward;
    double area;
    double areaTolerance;
};

PolyMesh sphere(SphereType type, int segments) {
    return makeSphere({100.0f, segments, type});
}

std::vector<Case> cases() {
    using std::numbers::pi;
    const Topology closed{0, 0, 0, 0, 2};
    const double ball = 4.0 * pi * 100.0 * 100.0;
    return {
        {"cube", makeCube({}), closed, fromOrigin, 240000.0, 1e-6},
        {"cube in segments", makeCube({{1.0f, 2.0f, 3.0f}, 3, 4, 2}), closed, fromOrigin, 22.0, 1e-6},
        {"sphere", makeSphere({}), closed, fromOrigin, ball, 0.03},
        {"tetrahedron", sphere(SphereType::Tetrahedron, 3), closed, fromOrigin, ball, 0.7},
        {"hexahedron", sphere(SphereType::Hexahedron, 3), closed, fromOrigin, ball, 0.5},
        {"icosahedron", sphere(SphereType::Icosahedron, 24), closed, fromOrigin, ball, 0.05},
        {"hemisphere", sphere(SphereType::Hemisphere, 24), {24, 0, 0, 0, 1}, fromOrigin, ball / 2.0, 0.03},
        {"disc", makeDisc({}), {36, 0, 0, 0, 1}, upward, pi * 10000.0, 0.01},
        {"disc with a hole",
         makeDisc({50.0f, 100.0f, 3, 36, Axis::PlusY}),
         {72, 0, 0, 0, 0},
         upward,
         pi * 7500.0,
         0.01},
        {"plane", makePlane({}), {80, 0, 0, 0, 1}, upward, 160000.0, 1e-6},
        {"cylinder", makeCylinder({}), closed, fromOrigin, pi * (2 * 2500.0 + 100.0 * 200.0), 0.01},
        {"open cylinder",
         makeCylinder({50.0f, 200.0f, 4, 36, false, 1, Axis::PlusY}),
         {72, 0, 0, 0, 0},
         fromOrigin,
         20000.0 * pi,
         0.01},
        {"flat cylinder",
         makeCylinder({50.0f, 0.0f, 4, 36, true, 1, Axis::PlusY}),
         {72, 0, 0, 0, 2},
         nullptr,
         5000.0 * pi,
         0.01},
        {"cone", makeCone({}), closed, fromOrigin, pi * (10000.0 + 100.0 * std::sqrt(50000.0)), 0.01},
        {"cone on its head", makeCone({100.0f, 0.0f, 200.0f, 3, 8, true, 2, Axis::PlusY}), closed, fromOrigin,
         pi * (10000.0 + 100.0 * std::sqrt(50000.0)), 0.15},
        {"torus", makeTorus({}), {0, 0, 0, 0, 0}, fromRing(100.0), 4.0 * pi * pi * 2000.0, 0.03},
        {"horn torus",
         makeTorus({50.0f, 36, 50.0f, 18, Axis::PlusY}),
         {0, 0, 0, 0, 1},
         fromRing(50.0),
         4.0 * pi * pi * 2500.0,
         0.03},
        {"tube",
         makeTube({50.0f, 100.0f, 100.0f, 2, 36, 2, Axis::PlusY}),
         {0, 0, 0, 0, 0},
         nullptr,
         2.0 * pi * (7500.0 + 150.0 * 100.0),
         0.01},
    };
}

TEST(Primitives, AreWeldedClosedAndFaceOutward) {
    for (const Case& c : cases()) {
        SCOPED_TRACE(c.name);
        std::string reason;
        EXPECT_TRUE(validate(c.mesh, reason)) << reason;
        EXPECT_EQ(topologyOf(c.mesh), c.topology);
        EXPECT_NEAR(areaOf(c.mesh), c.area, c.area * c.areaTolerance);
        int inward = 0;
        for (const CPolygon& polygon : c.mesh.polygons) {
            const Vec3 outward =
                c.outward ? c.outward(centreOf(c.mesh, polygon)) : areaVector(c.mesh.points, polygon);
            inward += dot(areaVector(c.mesh.points, polygon), outward) > 0.0 ? 0 : 1;
        }
        EXPECT_EQ(inward, 0);
    }
}

TEST(Primitives, SegmentsAndSizesAreBroughtIntoRange) {
    const float noNumber = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    for (const float bad : {0.0f, -1.0f, noNumber, inf}) {
        EXPECT_TRUE(makeCube({{bad, bad, 1.0f}, 3, 3, 3}).polygons.empty());
        EXPECT_TRUE(makeSphere({bad, 24, SphereType::Icosahedron}).polygons.empty());
        EXPECT_TRUE(makeDisc({0.0f, bad, 1, 36, Axis::PlusY}).points.empty());
        EXPECT_TRUE(makePlane({bad, 1.0f, 1, 1, Axis::PlusY}).points.empty());
        EXPECT_TRUE(makeCylinder({bad, 1.0f, 1, 36, true, 1, Axis::PlusY}).points.empty());
        EXPECT_TRUE(makeTorus({1.0f, 8, bad, 8, Axis::PlusY}).points.empty());
        EXPECT_TRUE(makeTube({1.0f, bad, 1.0f, 1, 8, 1, Axis::PlusY}).points.empty());
    }
    EXPECT_EQ(makeSphere({1.0f, -5, SphereType::Standard}).polygons.size(), 6u);
    EXPECT_EQ(makeCube({{1.0f, 1.0f, 1.0f}, 0, -1, 1}).polygons.size(), 6u);
    EXPECT_EQ(makePlane({1.0f, 1.0f, 0, 0, Axis::PlusY}).polygons.size(), 1u);
    EXPECT_EQ(makePlane({1.0f, 1.0f, 1 << 30, 1, Axis::PlusY}).polygons.size(), 5000u);

    for (const int axis : {-1, 6}) {
        EXPECT_EQ(makePlane({1.0f, 1.0f, 2, 2, Axis{axis}}).points,
                  makePlane({1.0f, 1.0f, 2, 2, Axis::PlusY}).points);
    }
    EXPECT_EQ(makeSphere({1.0f, 24, SphereType{77}}).points,
              makeSphere({1.0f, 24, SphereType::Standard}).points);

    const PolyMesh sheet = makeCube({{10.0f, 0.0f, 10.0f}, 2, 7, 2});
    EXPECT_EQ(topologyOf(sheet), (Topology{16, 0, 0, 0, 2}));
    EXPECT_NEAR(areaOf(sheet), 200.0, 1e-4);
}

} // namespace
} // namespace headless::geometry
