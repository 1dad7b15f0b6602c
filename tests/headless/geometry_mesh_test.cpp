// SPDX-License-Identifier: MIT
#include "headless/geometry/mesh_operations.h"

#include <limits>
#include <numbers>
#include <string>

#include <gtest/gtest.h>

#include "headless/geometry/primitives.h"
#include "headless/geometry/triangulate.h"
#include "headless/geometry_checks.h"

namespace headless::geometry {
namespace {

const float nan = std::numeric_limits<float>::quiet_NaN();

/// Positive for a closed mesh that faces outward.
double volumeOf(const PolyMesh& mesh) {
    double volume = 0.0;
    for (const CPolygon& polygon : mesh.polygons) {
        volume += dot(centreOf(mesh, polygon), areaVector(mesh.points, polygon)) / 3.0;
    }
    return volume;
}

Matrix scaled(float x, float y, float z, const Vector& off = {}) {
    return {off, {x, 0, 0}, {0, y, 0}, {0, 0, z}};
}

TEST(MeshOperations, SymmetryClosesAHalf) {
    // Half of a cylinder that lies along X, its open end almost on the plane.
    PolyMesh half = makeCone({0.0f, 1.0f, 2.0f, 4, 12, false, 1, Axis::PlusX});
    transformMesh(half, scaled(1, 1, 1, {1.005f, 0, 0}));
    const PolyMesh whole = makeSymmetry(half, {});
    EXPECT_EQ(topologyOf(whole), (Topology{0, 0, 0, 0, 2}));
    EXPECT_EQ(whole.points.size(), 2 * half.points.size() - 12);
    EXPECT_GT(volumeOf(whole), 3.0);
    EXPECT_FLOAT_EQ(boundsOf(whole.points).radius.x, 2.005f);

    SymmetryParameters apart;
    apart.weld = false;
    EXPECT_EQ(topologyOf(makeSymmetry(half, apart)), (Topology{24, 0, 0, 0, 2}));

    // A wall in the plane isn't doubled.
    PolyMesh capped = makeCone({0.0f, 1.0f, 2.0f, 1, 12, true, 1, Axis::PlusZ});
    transformMesh(capped, scaled(1, 1, 1, {0, 0, 1}));
    const PolyMesh doubled = makeSymmetry(capped, {SymmetryParameters::Plane::XY, true, 0.001f});
    EXPECT_EQ(doubled.polygons.size(), 36u);
    EXPECT_EQ(doubled.uvw.size(), 36u);
}

/// Area of the triangles that are wound like the polygon, less that of the others.
double signedAreaOf(const std::vector<std::array<int32_t, 3>>& triangles, const std::vector<Vector>& points,
                    const Vec3& normal, int& wrong) {
    double area = 0.0;
    for (const auto& t : triangles) {
        const double part = dot(areaVector(points, {t[0], t[1], t[2]}), normal);
        wrong += part < -1e-9 ? 1 : 0;
        area += part;
    }
    return area;
}

TEST(Triangulate, ConcavePolygonsKeepAreaAndWinding) {
    struct Shape {
        const char* name;
        std::vector<Vector> outline; ///< in the XY plane
        double area;
    };
    std::vector<Shape> shapes{
        {"square with points on its edges",
         {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 2, 0}, {1, 2, 0}, {0, 2, 0}},
         4},
        {"arrow", {{0, 0, 0}, {2, 2, 0}, {0, 4, 0}, {1, 2, 0}}, 2},
        {"L", {{0, 0, 0}, {3, 0, 0}, {3, 1, 0}, {1, 1, 0}, {1, 3, 0}, {0, 3, 0}}, 5},
    };
    Shape spiral{"star", {}, 0};
    for (int i = 0; i < 200; ++i) {
        const double angle = i * std::numbers::pi / 100.0;
        const double radius = i % 2 == 0 ? 10.0 : 1.0;
        spiral.outline.push_back(Vec3(radius * std::cos(angle), radius * std::sin(angle), 0).toVector());
    }
    spiral.area = 100.0 * 10.0 * std::sin(std::numbers::pi / 100.0);
    shapes.push_back(spiral);

    for (const Shape& shape : shapes) {
        std::vector<int32_t> corners(shape.outline.size());
        for (std::size_t i = 0; i < corners.size(); ++i) {
            corners[i] = static_cast<int32_t>(i);
        }
        for (std::size_t start = 0; start < corners.size(); ++start) {
            std::rotate(corners.begin(), corners.begin() + 1, corners.end());
            // In each of the three planes, and from behind.
            for (int turn = 0; turn < 6; ++turn) {
                SCOPED_TRACE(std::string(shape.name) + " from " + std::to_string(start) + " turn " +
                             std::to_string(turn));
                std::vector<Vector> points = shape.outline;
                for (Vector& p : points) {
                    p = turn % 3 == 0 ? p : turn % 3 == 1 ? Vector(p.z, p.x, p.y) : Vector(p.y, p.z, p.x);
                }
                Vec3 normal = turn % 3 == 0 ? Vec3(0, 0, 1) : turn % 3 == 1 ? Vec3(1, 0, 0) : Vec3(0, 1, 0);
                std::vector<int32_t> order = corners;
                if (turn >= 3) {
                    std::reverse(order.begin(), order.end());
                    normal = -normal;
                }
                const auto triangles = triangulate(order, points);
                int wrong = 0;
                EXPECT_EQ(triangles.size(), corners.size() - 2);
                EXPECT_NEAR(signedAreaOf(triangles, points, normal, wrong), shape.area, 1e-4);
                EXPECT_EQ(wrong, 0);
            }
        }
    }
}

TEST(Triangulate, BadPolygonsStillGiveTriangles) {
    const std::vector<Vector> points{{0, 0, 0}, {2, 2, 0}, {2, 0, 0}, {0, 2, 0}, {nan, 0, 0}};
    EXPECT_TRUE(triangulate(std::vector<int32_t>{0, 1}, points).empty());
    EXPECT_EQ(triangulate(std::vector<int32_t>{3, 1, 2}, points),
              (std::vector<std::array<int32_t, 3>>{{3, 1, 2}}));
    EXPECT_EQ(triangulate(std::vector<int32_t>{0, 1, 2, 3}, points).size(), 2u) << "crosses itself";
    EXPECT_EQ(triangulate(std::vector<int32_t>{0, 4, 2, 3, 1}, points).size(), 3u);
    EXPECT_EQ(triangulate(std::vector<int32_t>(7, 0), points).size(), 5u);

    // A saw of very many teeth, and a zigzag that crosses itself: in bounded time.
    std::vector<Vector> saw;
    std::vector<int32_t> corners;
    for (int32_t i = 0; i < 20000; ++i) {
        saw.push_back({static_cast<float>(i), i % 2 == 0 ? 0.0f : 5.0f, 0});
        corners.push_back(i);
    }
    saw.push_back({20000, -9, 0});
    saw.push_back({0, -9, 0});
    corners.push_back(20000);
    corners.push_back(20001);
    std::reverse(corners.begin(), corners.end());
    EXPECT_EQ(triangulate(corners, saw).size(), 20000u);
    for (std::size_t i = 0; i < saw.size(); ++i) {
        saw[i] = {static_cast<float>(i * 7919 % 20011), static_cast<float>(i * 104729 % 20011), 0};
    }
    EXPECT_EQ(triangulate(corners, saw).size(), 20000u);
}

} // namespace
} // namespace headless::geometry
