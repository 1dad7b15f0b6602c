// SPDX-License-Identifier: MIT
#include "headless/geometry/phong_normals.h"

#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "headless/geometry/primitives.h"
#include "headless/geometry_checks.h"

namespace headless::geometry {
namespace {

constexpr double degree = std::numbers::pi / 180.0;

std::vector<Vector> normalsOf(const PolyMesh& mesh, const PhongSettings& settings) {
    return computePhongNormals(mesh.points, mesh.polygons, settings);
}

Vector faceNormal(const PolyMesh& mesh, std::size_t polygon) {
    return areaVector(mesh.points, mesh.polygons[polygon]).normalized().toVector();
}

/// The largest distance of a corner's normal from the expected one, and of a triangle's fourth from its
/// third.
template <class Expected>
double worstError(const PolyMesh& mesh, const std::vector<Vector>& normals, const Expected& expected) {
    double worst = normals.size() == mesh.polygons.size() * 4 ? 0.0 : 1e9;
    for (std::size_t i = 0; i < mesh.polygons.size(); ++i) {
        const auto corners = cornersOf(mesh.polygons[i]);
        for (std::size_t c = 0; c < 4; ++c) {
            const Vector& point = mesh.points[static_cast<std::size_t>(corners[c])];
            worst = std::max(worst, distance(normals[i * 4 + c], expected(i, point)));
        }
    }
    return worst;
}

TEST(PhongNormals, CubeIsFlatBelowItsAngleAndRoundAboveIt) {
    const PolyMesh cube = makeCube({{2.0f, 2.0f, 2.0f}, 3, 3, 3});
    const auto flat = [&](std::size_t i, const Vector&) { return faceNormal(cube, i); };
    EXPECT_LT(worstError(cube, normalsOf(cube, {true, 89.0 * degree, {}}), flat), 1e-6);

    const PolyMesh box = makeCube({{2.0f, 2.0f, 2.0f}, 1, 1, 1});
    const auto round = [](std::size_t, const Vector& p) { return Vec3(p).normalized().toVector(); };
    EXPECT_LT(worstError(box, normalsOf(box, {true, 90.0 * degree, {}}), round), 1e-6);
    EXPECT_LT(worstError(box, normalsOf(box, {false, 0.0, {}}), round), 1e-6);
}

/// A roof of two quads along the Z axis, and the numbers of the common edge in both.
PolyMesh roof() {
    return {{{0, 1, 0}, {0, 1, 1}, {1, 0, 1}, {1, 0, 0}, {-1, 0, 0}, {-1, 0, 1}},
            {{0, 1, 2, 3}, {0, 4, 5, 1}},
            {}};
}

TEST(PhongNormals, BrokenEdgesAreHardFromEitherSide) {
    const PolyMesh mesh = roof();
    const auto ridge = [&](std::vector<int64_t> edges) {
        const std::vector<uint8_t> bytes = brokenEdgeBytes(2, edges);
        return distance(normalsOf(mesh, {false, 0.0, bytes})[0], faceNormal(mesh, 0));
    };
    EXPECT_GT(ridge({}), 0.5);
    EXPECT_GT(ridge({1, 2, 3, 4, 5, 6, -1, 8}), 0.5) << "other edges of the quads";
    EXPECT_LT(ridge({0}), 1e-6);
    EXPECT_LT(ridge({7}), 1e-6);

    PolyMesh triangles = mesh;
    triangles.polygons = {{1, 2, 0}, {0, 4, 1}};
    for (const int64_t edge : {3, 7}) {
        const std::vector<uint8_t> bytes = brokenEdgeBytes(2, std::vector<int64_t>{edge});
        EXPECT_LT(distance(normalsOf(triangles, {false, 0.0, bytes})[0], faceNormal(triangles, 0)), 1e-6);
    }
}

TEST(PhongNormals, BadPolygonsAreZeroAndLeaveTheirNeighboursAlone) {
    const float noNumber = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    PolyMesh mesh = roof();
    mesh.points.push_back({noNumber, 0, 0});
    mesh.points.push_back({inf, 0, 0});
    mesh.polygons.insert(mesh.polygons.end(), {{0, 1, 6}, {0, 1, 7}, {0, 0, 1}, {0, 1, 0, 1}, {2, 2, 2, 2}});
    const std::vector<Vector> normals = normalsOf(mesh, {true, 10.0 * degree, {}});
    for (std::size_t i = 0; i < normals.size(); ++i) {
        EXPECT_EQ(normals[i], i < 8 ? faceNormal(mesh, i / 4) : Vector()) << i;
    }
    // Two sheets back to back cancel out.
    const PolyMesh sheets{{{0, 0, 0}, {1, 0, 0}, {0, 0, 1}}, {{0, 1, 2}, {0, 2, 1}}, {}};
    EXPECT_EQ(normalsOf(sheets, {false, 0.0, {}})[0], faceNormal(sheets, 0));
    EXPECT_TRUE(computePhongNormals({}, {}, {}).empty());
}

} // namespace
} // namespace headless::geometry
