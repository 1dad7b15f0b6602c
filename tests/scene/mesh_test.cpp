// SPDX-License-Identifier: MIT
#include "scene/mesh.h"

#include "scene/xml_text.h"

#include <gtest/gtest.h>

#include <cmath>

namespace Quenza {
namespace {

/// The unit square in the plane of x and y.
Ref<Mesh> square() {
    const Ref<Mesh> mesh = new Mesh;
    for (const Vec3f& v : {Vec3f{0, 0, 0}, Vec3f{1, 0, 0}, Vec3f{1, 1, 0}, Vec3f{0, 1, 0}})
        mesh->addVertex(v);
    return mesh;
}

void addTriangle(Mesh& mesh, std::initializer_list<u32> vertices,
                 std::initializer_list<u32> uvs = {0, 0, 0}) {
    mesh.addTriangle(vertices.begin(), uvs.begin(), 0);
}

void addQuad(Mesh& mesh, std::initializer_list<u32> vertices, std::initializer_list<u32> uvs = {0, 0, 0, 0}) {
    mesh.addQuad(vertices.begin(), uvs.begin(), 0);
}

TEST(MeshTest, NormalisesNormalsAndRefusesBadOnes) {
    Mesh mesh;
    mesh.addVertex({1, 2, 3}, {0, 0, -4});
    EXPECT_EQ(mesh.vert_normals[0], (Vec3f{0, 0, -1}));
    for (const Vec3f& bad : {Vec3f{0, 0, 0}, Vec3f{NAN, 0, 0}, Vec3f{INFINITY, 0, 0}})
        EXPECT_EQ(thrownText([&] { mesh.addVertex({0, 0, 0}, bad); }), "Invalid normal");
    EXPECT_EQ(mesh.vert_positions.size(), 1u);
}

TEST(MeshTest, ChecksIndices) {
    const Ref<Mesh> mesh = square();
    EXPECT_EQ(thrownText([&] {
                  addTriangle(*mesh, {0, 1, 4});
              }),
              "Triangle vertex index is out of bounds. (vertex index=4)");
    EXPECT_EQ(thrownText([&] {
                  addQuad(*mesh, {0, 1, 2, 4294967295});
              }),
              "Quad vertex index is out of bounds. (vertex index=4294967295)");
    addTriangle(*mesh, {0, 1, 2}, {7, 8, 9}); // without UV sets UV indices are free
    mesh->setMaxNumTexcoordSets(2);
    mesh->addUVs({});
    EXPECT_EQ(thrownText([&] {
                  addTriangle(*mesh, {0, 1, 2}, {0, 1, 0});
              }),
              "Triangle uv index is out of bounds. (uv index=1)");
    EXPECT_EQ(thrownText([&] {
                  addQuad(*mesh, {0, 1, 2, 3}, {0, 0, 0, 2});
              }),
              "Quad uv index is out of bounds. (uv index=2)");
    EXPECT_EQ(mesh->triangles.size(), 1u);
    EXPECT_TRUE(mesh->quads.empty());
    EXPECT_EQ(thrownText([&] { mesh->checkAllIndices(); }),
              "Triangle uv index is out of bounds. (uv index=7)");
}

TEST(MeshTest, DropsDegenerateTrianglesButNotQuads) {
    const Ref<Mesh> mesh = square();
    const f32 tiny = 1e-11f;
    mesh->addVertex({tiny, 0, 0});
    mesh->addVertex({0, tiny, 0});
    mesh->addVertex({NAN, 0, 0});
    addTriangle(*mesh, {1, 1, 1});
    addTriangle(*mesh, {0, 4, 5}); // 0.5e-22
    addTriangle(*mesh, {0, 1, 6});
    EXPECT_TRUE(mesh->triangles.empty());
    addQuad(*mesh, {1, 1, 1, 1});
    EXPECT_EQ(mesh->quads.size(), 1u);
    addTriangle(*mesh, {0, 1, 2});
    EXPECT_EQ(mesh->triangles.size(), 1u);
}

TEST(MeshTest, EndsWithAnErrorWhenArraysDoNotMatch) {
    const Ref<Mesh> mesh = square();
    mesh->vert_normals.push_back({0, 0, 1});
    EXPECT_EQ(thrownText([&] { mesh->endOfModel(); }),
              "Must be zero normals, or normals.size() must equal verts.size()");
    mesh->num_uv_mappings = 2;
    mesh->uv_pairs.resize(3);
    EXPECT_EQ(thrownText([&] { mesh->endOfModel(); }),
              "Mesh uv_pairs.size() must be a multiple of mesh.num_uv_mappings");
}

} // namespace
} // namespace Quenza
