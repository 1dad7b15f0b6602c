// SPDX-License-Identifier: MIT
#include "headless/geometry/uv_projection.h"

#include <limits>
#include <numbers>

#include <gtest/gtest.h>

#include "headless/geometry/primitives.h"
#include "headless/geometry_checks.h"

namespace headless::geometry {
namespace {

/// A polygon with the given corners.
PolyMesh face(std::vector<Vector> points) {
    PolyMesh mesh{std::move(points), {}, {}};
    mesh.polygons = {mesh.points.size() == 3 ? CPolygon(0, 1, 2) : CPolygon(0, 1, 2, 3)};
    return mesh;
}

UVWStruct project(Projection projection, const PolyMesh& mesh, const Matrix& matrix = {},
                  const std::optional<ProjectionCamera>& camera = std::nullopt) {
    const std::vector<UVWStruct> uvw =
        generateUVW(projection, mesh.points, mesh.polygons, matrix, mesh.uvw, camera);
    return uvw.empty() ? UVWStruct{{-9, -9, -9}, {}, {}, {}} : uvw.front();
}

void expectNear(const UVWStruct& actual, const std::vector<Vector>& expected) {
    const std::vector<Vector> corners{actual.a, actual.b, actual.c, actual.d};
    for (std::size_t i = 0; i < 4; ++i) {
        const Vector& wanted = expected[std::min(i, expected.size() - 1)];
        EXPECT_LT(distance(corners[i], wanted), 1e-5)
            << "corner " << i << ": " << corners[i].x << ", " << corners[i].y << ", " << corners[i].z;
    }
}

TEST(UVProjection, SphericalTurnsFromXToZAndFallsFromThePole) {
    expectNear(project(Projection::Spherical, face({{1, 0, 0}, {0, 0, 1}, {0, -1, 1}, {1, -1, 0}})),
               {{0, 0.5f, 0}, {0.25f, 0.5f, 0}, {0.25f, 0.75f, 0}, {0, 0.75f, 0}});
    // Scaled, offset: the texture space decides.
    Matrix matrix;
    matrix.off = {0, 3, 0};
    matrix.axisX = {0.25f, 0, 0};
    expectNear(project(Projection::Spherical, face({{4, -3, 0}, {0, -3, 1}, {4, -4, 0}}), matrix),
               {{0, 0.5f, 0}, {0.25f, 0.5f, 0}, {0, 0.75f, 0}});
}

TEST(UVProjection, SeamRunsOnBeyondOne) {
    const auto at = [](double turn, float y) {
        const double angle = 2.0 * std::numbers::pi * turn;
        return Vector(static_cast<float>(std::cos(angle)), y, static_cast<float>(std::sin(angle)));
    };
    for (const Projection projection : {Projection::Spherical, Projection::Cylindrical}) {
        const auto u = [&](double a, double b, double c) {
            const UVWStruct uvw = project(projection, face({at(a, 0), at(b, 0), at(c, -1)}));
            return Vector(uvw.a.x, uvw.b.x, uvw.c.x);
        };
        EXPECT_LT(distance(u(0.9, 0.1, 0.0), {0.9f, 1.1f, 1.0f}), 1e-5);
        EXPECT_LT(distance(u(0.1, 0.0, 0.9), {1.1f, 1.0f, 0.9f}), 1e-5);
        EXPECT_LT(distance(u(0.9, 1.0, 0.95), {0.9f, 1.0f, 0.95f}), 1e-5);
        EXPECT_LT(distance(u(0.0, 0.1, 0.05), {0.0f, 0.1f, 0.05f}), 1e-5);
        EXPECT_LT(distance(u(-1e-7, 0.1, 0.05), {0.0f, 0.1f, 0.05f}), 1e-5) << "rounding at the seam";
        EXPECT_LT(distance(u(0.5, 0.8, 0.1), {0.5f, 0.8f, 1.1f}), 1e-5) << "more than half of the turn";
    }
}

TEST(UVProjection, CornersOnTheAxisLieBetweenTheirNeighbours) {
    expectNear(project(Projection::Spherical, face({{0, 1, 0}, {0, 0, 1}, {1, 0, 0}})),
               {{0.125f, 0, 0}, {0.25f, 0.5f, 0}, {0, 0.5f, 0}});
    expectNear(project(Projection::Cylindrical, face({{1e-9f, -1, 0}, {1, -1, 0}, {0, -1, 1}})),
               {{0.125f, 1, 0}, {0, 1, 0}, {0.25f, 1, 0}});
    const UVWStruct line = project(Projection::Spherical, face({{0, 1, 0}, {0, 0, 0}, {0, -1, 0}}));
    EXPECT_TRUE(std::isfinite(line.a.x) && std::isfinite(line.b.y));
}

TEST(UVProjection, CubicGivesACubeItsOwnUVs) {
    const PolyMesh cube = makeCube({{2.0f, 2.0f, 2.0f}, 3, 2, 4});
    const auto worst = [&](const PolyMesh& mesh, const Matrix& matrix) {
        const std::vector<UVWStruct> uvw = generateUVW(Projection::Cubic, mesh.points, mesh.polygons, matrix);
        double error = 0.0;
        for (std::size_t i = 0; i < uvw.size(); ++i) {
            error = std::max({error, distance(uvw[i].a, cube.uvw[i].a), distance(uvw[i].b, cube.uvw[i].b),
                              distance(uvw[i].c, cube.uvw[i].c), distance(uvw[i].d, cube.uvw[i].d)});
        }
        return error;
    };
    EXPECT_LT(worst(cube, {}), 1e-5);
    // A mirrored texture axis: the left side still takes the picture of the side it looks to.
    Matrix mirrored;
    mirrored.axisX = {-1, 0, 0};
    const PolyMesh front = face({{-1, 1, -1}, {0, 1, -1}, {0, -1, -1}, {-1, -1, -1}});
    expectNear(project(Projection::Cubic, front, mirrored),
               {{1, 0, 0}, {0.5f, 0, 0}, {0.5f, 1, 0}, {1, 1, 0}});
}

TEST(UVProjection, NothingToWorkWithGivesNothing) {
    const PolyMesh mesh = face({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}});
    const auto generate = [&](int projection, const std::vector<UVWStruct>& existing) {
        return generateUVW(Projection{projection}, mesh.points, mesh.polygons, {}, existing);
    };
    for (const int projection : {4, 6, 8, 9, -1}) {
        EXPECT_TRUE(generate(projection, {}).empty()) << projection;
    }
    const std::vector<UVWStruct> own{{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {7, 8, 9}}};
    EXPECT_EQ(generate(6, own), own);

    const float noNumber = std::numeric_limits<float>::quiet_NaN();
    const float inf = std::numeric_limits<float>::infinity();
    PolyMesh bad = face({{noNumber, 0, 0}, {inf, 1, 0}, {3e38f, 3e38f, -3e38f}});
    for (const int projection : {0, 1, 2, 3, 4, 5, 7, 8}) {
        for (const Vector& axis : {Vector(1, 0, 0), Vector(0, 0, 0), Vector(noNumber, 0, inf)}) {
            Matrix matrix;
            matrix.axisX = axis;
            ProjectionCamera camera;
            camera.apertureWidth = axis.x;
            camera.fromObject = matrix;
            const UVWStruct uvw = project(Projection{projection}, bad, matrix, camera);
            for (const Vector& t : {uvw.a, uvw.b, uvw.c, uvw.d}) {
                EXPECT_TRUE(std::isfinite(t.x) && std::isfinite(t.y) && t.z == 0.0f) << projection;
            }
        }
    }
}

} // namespace
} // namespace headless::geometry
