// SPDX-License-Identifier: MIT
#include "scene/mesh_measure.h"

#include "scene/mesh_loader.h"
#include "scene/xml_text.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace Quenza {
namespace {

/// Its largest numbers may stand anywhere. It has as many quads as triangles.
Ref<Mesh> randomMesh(u64 vertices, u64 triangles) {
    std::mt19937 random(u32(vertices) + 1);
    std::uniform_real_distribution<f32> number(-10, 10);
    const auto index = [&] { return u32(random() % vertices); };
    const Ref<Mesh> mesh = new Mesh;
    for (u64 i = 0; i < vertices; ++i)
        mesh->addVertex({number(random), number(random), number(random)});
    for (u64 i = 0; i < triangles; ++i) {
        const u32 v[4] = {index(), index(), index(), index()};
        const u32 uvs[4] = {u32(random()), u32(random()), u32(random()), u32(random())};
        mesh->addTriangle(v, uvs, index());
        mesh->addQuad(v, uvs, index());
    }
    return mesh;
}

TEST(MeshMeasureTest, FindsTheExtremesOfAnyCountInAnyPieces) {
    for (u64 count = 0; count < 70; ++count) {
        const Ref<Mesh> mesh = randomMesh(count, count);
        if (count > 3)
            mesh->vert_positions[count / 2].y = NAN;
        const u64 cut = count / 3;
        MeshMeasure pieces;
        pieces.takePositions(mesh->vert_positions.data(), cut);
        pieces.takePositions(mesh->vert_positions.data() + cut, count - cut);
        pieces.takeFaces(mesh->quads.data(), mesh->quads.size());
        pieces.takeFaces(mesh->triangles.data(), mesh->triangles.size());
        MeshMeasure expected;
        for (const Vec3f& v : mesh->vert_positions) {
            expected.min = {std::fmin(expected.min.x, v.x), std::fmin(expected.min.y, v.y),
                            std::fmin(expected.min.z, v.z)};
            expected.max = {std::fmax(expected.max.x, v.x), std::fmax(expected.max.y, v.y),
                            std::fmax(expected.max.z, v.z)};
            expected.squared_radius = std::fmax(expected.squared_radius, v.x * v.x + v.y * v.y + v.z * v.z);
        }
        const auto take = [&](const u32* vertices, const u32* uvs, u32 corners, u32 material) {
            expected.largest_vertex =
                std::max(expected.largest_vertex, *std::max_element(vertices, vertices + corners));
            expected.largest_uv = std::max(expected.largest_uv, *std::max_element(uvs, uvs + corners));
            expected.largest_material = std::max(expected.largest_material, material);
        };
        for (const MeshTriangle& t : mesh->triangles)
            take(t.vertex_indices, t.uv_indices, 3, t.tri_mat_index);
        for (const MeshQuad& q : mesh->quads)
            take(q.vertex_indices, q.uv_indices, 4, q.mat_index);
        for (const MeshMeasure& measure : {pieces, measureMesh(*mesh)}) {
            EXPECT_EQ(measure.min, expected.min) << count;
            EXPECT_EQ(measure.max, expected.max) << count;
            EXPECT_EQ(measure.squared_radius, expected.squared_radius) << count;
            EXPECT_EQ(measure.largest_vertex, expected.largest_vertex) << count;
            EXPECT_EQ(measure.largest_uv, expected.largest_uv) << count;
            EXPECT_EQ(measure.largest_material, expected.largest_material) << count;
        }
    }
}

// Large enough for all arrays to be read by several threads.
TEST(MeshMeasureTest, LargeFilesAreReadScaledAndChecked) {
    constexpr u64 VERTEX_COUNT = 700000;
    constexpr u64 FACES = 300000;
    const TempDir dir;
    const String path = dir / "large.qzmesh";
    const Ref<Mesh> written = randomMesh(VERTEX_COUNT, FACES);
    Mesh::writeToFile(path, *written);
    const std::string bytes = fileBytes(path);

    Mesh mesh;
    loadMeshFile(path, mesh, 2);
    EXPECT_TRUE(
        std::equal(mesh.quads.begin(), mesh.quads.end(), written->quads.begin(), written->quads.end()));
    EXPECT_TRUE(std::equal(mesh.triangles.begin(), mesh.triangles.end(), written->triangles.begin(),
                           written->triangles.end()));
    written->endOfModel();
    ASSERT_EQ(mesh.vert_positions.size(), VERTEX_COUNT);
    EXPECT_EQ(mesh.vert_positions[VERTEX_COUNT - 1].z, 2 * written->vert_positions[VERTEX_COUNT - 1].z);
    EXPECT_EQ(mesh.aabb_min.x, 2 * written->aabb_min.x);
    EXPECT_EQ(mesh.max_radius, 2 * written->max_radius);
    EXPECT_EQ(mesh.num_materials_referenced, written->num_materials_referenced);

    const auto failure = [&](const std::string& changed) {
        writeBytes(path, changed);
        return thrownText([&] {
            Mesh again;
            loadMeshFile(path, again, 1);
        });
    };
    std::string bad_quad = bytes;
    for (u64 i = 0; i < 4; ++i)
        bad_quad[bytes.size() - sizeof(MeshQuad) + i] = '\x7F';
    EXPECT_EQ(failure(bad_quad), "Quad vertex index is out of bounds. (vertex index=2139062143)");
    EXPECT_EQ(failure(bytes.substr(0, bytes.size() - 1)),
              "Error while reading from '" + path.toStdString() + "'.");
}

} // namespace
} // namespace Quenza
