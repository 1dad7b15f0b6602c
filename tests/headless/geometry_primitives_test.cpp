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
        {"coarsest sphere", sphere(SphereType::Standard, 3), closed, fromOrigin, ball, 0.7},
        {"odd sphere", sphere(SphereType::Standard, 7), closed, fromOrigin, ball, 0.25},
        {"tetrahedron", sphere(SphereType::Tetrahedron, 3), closed, fromOrigin, ball, 0.7},
        {"fine tetrahedron", sphere(SphereType::Tetrahedron, 30), closed, fromOrigin, ball, 0.1},
        {"hexahedron", sphere(SphereType::Hexahedron, 3), closed, fromOrigin, ball, 0.5},
        {"fine hexahedron", sphere(SphereType::Hexahedron, 31), closed, fromOrigin, ball, 0.02},
        {"octahedron", sphere(SphereType::Octahedron, 24), closed, fromOrigin, ball, 0.05},
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
        {"cylinder with cap rows", makeCylinder({50.0f, 200.0f, 2, 5, true, 3, Axis::PlusY}), closed,
         fromOrigin, 25000.0 * pi, 0.25},
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
        {"frustum", makeCone({50.0f, 100.0f, 200.0f, 1, 36, true, 1, Axis::PlusY}), closed, fromOrigin,
         pi * (12500.0 + 150.0 * std::sqrt(42500.0)), 0.01},
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
        {"tube without a hole", makeTube({0.0f, 100.0f, 100.0f, 2, 36, 2, Axis::PlusY}), closed, fromOrigin,
         2.0 * pi * (10000.0 + 10000.0), 0.01},
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

TEST(Primitives, TubeWallsFaceAwayFromTheMaterial) {
    const PolyMesh tube = makeTube({});
    for (const CPolygon& polygon : tube.polygons) {
        const Vec3 centre = centreOf(tube, polygon);
        const double around = std::hypot(centre.x, centre.z);
        const Vec3 radial(centre.x / around, 0.0, centre.z / around);
        const Vec3 normal = areaVector(tube.points, polygon).normalized();
        if (std::abs(centre.y) > 49.9) {
            EXPECT_NEAR(normal.y, centre.y > 0.0 ? 1.0 : -1.0, 1e-5);
        } else {
            EXPECT_NEAR(dot(normal, radial), around > 75.0 ? 1.0 : -1.0, 1e-2);
        }
    }
}

/// The change of position with u and v, solved from three corners.
struct TextureAxes {
    Vec3 alongU;
    Vec3 alongV;
};

TextureAxes textureAxesOf(const PolyMesh& mesh, std::size_t i) {
    const CPolygon& p = mesh.polygons[i];
    const UVWStruct& t = mesh.uvw[i];
    const auto at = [&](int32_t index) { return Vec3(mesh.points[static_cast<std::size_t>(index)]); };
    const Vec3 e1 = at(p.b) - at(p.a);
    const Vec3 e2 = at(p.c) - at(p.a);
    const Vec3 t1 = Vec3(t.b) - Vec3(t.a);
    const Vec3 t2 = Vec3(t.c) - Vec3(t.a);
    const double det = t1.x * t2.y - t1.y * t2.x;
    return {(e1 * t2.y - e2 * t1.y) * (1.0 / det), (e2 * t1.x - e1 * t2.x) * (1.0 / det)};
}

TEST(Primitives, TexturesAreReadableFromOutside) {
    for (const Case& c : cases()) {
        SCOPED_TRACE(c.name);
        ASSERT_EQ(c.mesh.uvw.size(), c.mesh.polygons.size());
        int mirrored = 0;
        for (std::size_t i = 0; i < c.mesh.polygons.size(); ++i) {
            const UVWStruct& uvw = c.mesh.uvw[i];
            for (const Vector& t : {uvw.a, uvw.b, uvw.c, uvw.d}) {
                ASSERT_TRUE(t.x >= -1e-4f && t.x < 2.0f && t.y >= 0.0f && t.y <= 1.0f && t.z == 0.0f);
            }
            const TextureAxes axes = textureAxesOf(c.mesh, i);
            const Vec3 normal = areaVector(c.mesh.points, c.mesh.polygons[i]);
            mirrored += dot(cross(axes.alongU, axes.alongV), normal) > 0.0 ? 0 : 1;
        }
        // A pole within a face can't be laid out flat.
        const bool poleInFace =
            c.name == "tetrahedron" || c.name == "fine tetrahedron" || c.name.ends_with("hexahedron");
        EXPECT_LE(mirrored, poleInFace ? 8 : 0);
    }
}

TEST(Primitives, CubeSidesHangUpright) {
    const PolyMesh cube = makeCube({});
    for (std::size_t i = 0; i < cube.polygons.size(); ++i) {
        const Vec3 normal = areaVector(cube.points, cube.polygons[i]).normalized();
        const Vec3 down = textureAxesOf(cube, i).alongV.normalized();
        EXPECT_NEAR(normal.y == 0.0 ? down.y : dot(down, {0.0, 0.0, normal.y}), -1.0, 1e-6);
    }
}

TEST(Primitives, OrientationTurnsTheNormal) {
    const Vec3 directions[] = {{1, 0, 0}, {-1, 0, 0}, {0, 1, 0}, {0, -1, 0}, {0, 0, 1}, {0, 0, -1}};
    for (int i = 0; i < 6; ++i) {
        const Axis axis{i};
        const Vec3 direction = directions[i];
        for (const PolyMesh& mesh :
             {makePlane({4.0f, 2.0f, 2, 1, axis}), makeDisc({0.0f, 1.0f, 1, 8, axis})}) {
            for (const CPolygon& polygon : mesh.polygons) {
                EXPECT_NEAR(dot(areaVector(mesh.points, polygon).normalized(), direction), 1.0, 1e-6);
            }
        }
        const Bounds cone = boundsOf(makeCone({1.0f, 2.0f, 10.0f, 1, 8, true, 1, axis}).points);
        EXPECT_NEAR(std::abs(dot(cone.radius, direction)), 5.0, 1e-5);
        const PolyMesh open = makeCone({0.0f, 2.0f, 10.0f, 1, 8, false, 1, axis});
        EXPECT_NEAR(dot(open.points.front(), direction), 5.0, 1e-5)
            << "the tip is at the end the axis points to";
    }
}

TEST(Primitives, SegmentsAndSizesAreBroughtIntoRange) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    for (const float bad : {0.0f, -1.0f, nan, inf}) {
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
