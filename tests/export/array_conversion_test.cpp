// SPDX-License-Identifier: MIT
#include "export/array_conversion.h"
#include "export/reference_conversion.h"
#include "export/test_mesh.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// Bit for bit: 0 and -0 differ here.
template <class T>
::testing::AssertionResult sameBytes(const std::vector<T>& expected, const Quenza::Vector<T>& actual) {
    if (expected.size() != actual.size()) {
        return ::testing::AssertionFailure() << expected.size() << " expected, " << actual.size() << " there";
    }
    for (size_t i = 0; i < expected.size(); ++i) {
        if (std::memcmp(&expected[i], &actual[i], sizeof(T)) != 0) {
            return ::testing::AssertionFailure() << "element " << i << " differs";
        }
    }
    return ::testing::AssertionSuccess();
}

void expectReference(ArrayConverter& converter, const MeshArrays& arrays, const PolygonRuns& runs,
                     float scale, bool merge) {
    const ReferenceConversion reference(arrays, runs, scale, merge);
    Quenza::Mesh mesh;
    converter.convert(arrays, runs, scale, merge, mesh);
    EXPECT_EQ(mesh.num_uv_mappings, 1u);
    EXPECT_TRUE(sameBytes(reference.positions, mesh.vert_positions));
    EXPECT_TRUE(sameBytes(reference.normals, mesh.vert_normals));
    EXPECT_TRUE(sameBytes(reference.uvs, mesh.uv_pairs));
    EXPECT_TRUE(sameBytes(reference.triangles, mesh.triangles));
    EXPECT_TRUE(sameBytes(reference.quads, mesh.quads));
}

/// Few different values, so that points, normals and UVs repeat in every combination; among them both zeros,
/// normals of every kind, and points of equal coordinates under different indices.
TestMesh randomMesh(uint32_t seed, int32_t pointCount, int32_t polygonCount, bool hasNormals, bool hasUvs) {
    std::mt19937 random(seed);
    const auto pick = [&random](std::initializer_list<float> values) {
        return values.begin()[random() % values.size()];
    };
    TestMesh mesh;
    for (int32_t i = 0; i < pointCount; ++i) {
        mesh.points.emplace_back(pick({0.0f, -0.0f, 1.5f, -7.25f, 1e-30f}), pick({0.0f, 3.0f, 1e6f}),
                                 pick({-0.0f, 0.1f, 0.2f, 0.3f}));
    }
    const auto point = [&] { return static_cast<int32_t>(random() % static_cast<uint32_t>(pointCount)); };
    for (int32_t i = 0; i < polygonCount; ++i) {
        const bool isTriangle = random() % 3 == 0;
        const int32_t c = point();
        mesh.polygons.emplace_back(point(), point(), c, isTriangle ? c : point());
        for (int corner = 0; corner < 4 && hasNormals; ++corner) {
            mesh.normals.emplace_back(pick({0.0f, -0.0f, 1.0f, 0.6f}), pick({0.0f, 0.8f, 2.0f}),
                                      pick({0.0f, 1e-20f}));
        }
        if (hasUvs) {
            const auto uv = [&] {
                return Vector(pick({0.0f, -0.0f, 0.25f, 1.0f}), pick({0.0f, 0.5f, 1.0f}), 0.0f);
            };
            mesh.uvs.push_back({uv(), uv(), uv(), uv()});
        }
    }
    return mesh;
}

/// Runs that leave polygons out, stand in any order and are as short as one polygon.
PolygonRuns unevenRuns(int32_t polygonCount) {
    PolygonRuns runs;
    for (uint32_t slot = 0; slot < 3; ++slot) {
        for (int32_t i = polygonCount - 1 - int32_t(slot); i >= 0; i -= 7) {
            runs.push_back({i, i + 1, slot});
        }
    }
    runs.push_back({1, 1, 3});
    return runs;
}

} // namespace

TEST(ArrayConversion, GivesWhatOrderedMapsGive) {
    ArrayConverter converter;
    uint32_t seed = 0;
    // The last size takes the two threads.
    for (const auto& [points, polygons] :
         {std::pair(0, 0), {1, 1}, {5, 3}, {40, 100}, {3000, 2000}, {20000, 40000}}) {
        for (int variant = 0; variant < 8; ++variant) {
            const bool hasNormals = variant & 1;
            const bool hasUvs = variant & 2;
            const bool merge = variant & 4;
            SCOPED_TRACE(::testing::Message() << polygons << " polygons, variant " << variant);
            const TestMesh mesh = randomMesh(++seed, points, polygons, hasNormals, hasUvs);
            expectReference(converter, mesh.arrays(), mesh.oneRun(), 0.01f, merge);
            expectReference(converter, mesh.arrays(), unevenRuns(polygons), 2.0f, merge);
        }
    }
}

TEST(ArrayConversion, ManyNormalsAtOnePointStayLinear) {
    // A pole: every triangle has a normal of its own at point 0. Comparing with all earlier ones would take
    // hours.
    constexpr int32_t count = 50000;
    TestMesh mesh;
    mesh.points = {Vector(0, 1, 0)};
    for (int32_t i = 0; i < count; ++i) {
        const float angle = static_cast<float>(i) * (6.2831853f / count);
        mesh.points.emplace_back(std::cos(angle), 0.0f, std::sin(angle));
        mesh.polygons.emplace_back(0, 1 + i, 1 + (i + 1) % count);
        const Vector normal = Vector(std::cos(angle), static_cast<float>(i + 1) * 1e-5f, std::sin(angle));
        mesh.normals.insert(mesh.normals.end(), 4, normal.GetNormalized());
    }
    ArrayConverter converter;
    expectReference(converter, mesh.arrays(), mesh.oneRun(), 1.0f, true);
}

TEST(ArrayConversion, AppliesTheTilingInSinglePrecision) {
    TestMesh mesh = randomMesh(1, 10, 50, true, true);
    MeshArrays arrays = mesh.arrays();
    arrays.uvs.scaleU = 1.0f / 0.3f;
    arrays.uvs.scaleV = 1.0f / 7.0f;
    arrays.uvs.shiftU = 0.1f * arrays.uvs.scaleU;
    arrays.uvs.shiftV = -2.0f * arrays.uvs.scaleV;
    ArrayConverter converter;
    expectReference(converter, arrays, mesh.oneRun(), 1.0f, true);
    arrays.uvs.records = nullptr;
    expectReference(converter, arrays, mesh.oneRun(), 1.0f, true);
}

TEST(ArrayConversion, UvsThatAreNoNumbersEqualThemselves) {
    TestMesh mesh;
    mesh.points = {Vector(0, 0, 0), Vector(1, 0, 0), Vector(0, 0, 1)};
    mesh.polygons.assign(100000, CPolygon(0, 1, 2));
    const Vector uv(notANumber, infinity, 0.0f);
    mesh.uvs.assign(mesh.polygons.size(), UVWStruct{uv, uv, uv, uv});
    Quenza::Mesh out;
    ArrayConverter().convert(mesh.arrays(), mesh.oneRun(), 1.0f, true, out);
    EXPECT_EQ(out.uv_pairs.size(), 1u);
}

TEST(CornerNormal, IsAUnitVectorInSceneSpace) {
    const float almostOne = std::nextafter(1.0f, 2.0f);
    const struct {
        Vector host;
        Quenza::Vec3f scene;
    } cases[] = {
        {{0.0f, 1.0f, 0.0f}, {0.0f, 0.0f, 1.0f}},      {{0.6f, 0.0f, 0.8f}, {0.6f, 0.8f, 0.0f}},
        {{0.0f, 0.0f, 0.0f}, {1.0f, 0.0f, 0.0f}},      {{0.0f, 9e-8f, 0.0f}, {1.0f, 0.0f, 0.0f}},
        {{0.0f, 0.0f, -1e-6f}, {0.0f, -1.0f, 0.0f}},   {{0.0f, -4.0f, 0.0f}, {0.0f, 0.0f, -1.0f}},
        {{almostOne, 0.0f, 0.0f}, {1.0f, 0.0f, 0.0f}}, {{notANumber, 1.0f, 0.0f}, {1.0f, 0.0f, 0.0f}},
        {{0.0f, infinity, 0.0f}, {1.0f, 0.0f, 0.0f}},  {{0.0f, 3e30f, 0.0f}, {1.0f, 0.0f, 0.0f}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(cornerNormal(c.host), c.scene) << c.host.x << " " << c.host.y << " " << c.host.z;
    }
    // Within the tolerance a normal isn't touched.
    const float close = std::nextafter(1.0f, 0.0f);
    EXPECT_EQ(cornerNormal({close, 0.0f, 0.0f}), (Quenza::Vec3f{close, 0.0f, 0.0f}));
}

TEST(MeshFault, IsFoundBeforeConversion) {
    const TestMesh sound{{Vector(0, 0, 0), Vector(1, 0, 0), Vector(0, 0, 1)}, {CPolygon(0, 1, 2)}, {}, {}};
    const auto faultWith = [&sound](auto&& change, float scale = 1.0f) {
        TestMesh mesh = sound;
        change(mesh);
        return findMeshFault(mesh.arrays(), scale);
    };
    EXPECT_EQ(faultWith([](TestMesh&) {}), MeshFault::NONE);
    EXPECT_EQ(faultWith([](TestMesh& m) { m.polygons.clear(); }), MeshFault::NONE);
    EXPECT_EQ(faultWith([](TestMesh& m) { m.polygons[0].a = 3; }), MeshFault::POINT_INDEX);
    EXPECT_EQ(faultWith([](TestMesh& m) { m.polygons[0].d = -1; }), MeshFault::POINT_INDEX);
    EXPECT_EQ(faultWith([](TestMesh& m) { m.points.clear(); }), MeshFault::POINT_INDEX);
    EXPECT_EQ(faultWith([](TestMesh& m) { m.points[1].y = notANumber; }), MeshFault::NOT_FINITE);
    EXPECT_EQ(faultWith([](TestMesh& m) { m.points[2].z = -infinity; }), MeshFault::NOT_FINITE);
    const auto enlarge = [](TestMesh& m) { m.points[2].x = 1e38f; };
    EXPECT_EQ(faultWith(enlarge), MeshFault::NONE);
    EXPECT_EQ(faultWith(enlarge, 1000.0f), MeshFault::NOT_FINITE);
}
