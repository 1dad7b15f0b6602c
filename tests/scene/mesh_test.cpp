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

/// CRC-32 by its definition: the reflected polynomial 0xEDB88320, bit by bit.
u32 referenceCRC(const std::string& bytes) {
    u32 crc = 0xFFFFFFFF;
    for (const char c : bytes) {
        crc ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320u : 0);
    }
    return ~crc;
}

template <class T>
void appendBytes(std::string& bytes, const T& record) {
    bytes.append(reinterpret_cast<const char*>(&record), sizeof record);
}

TEST(MeshTest, HashesAllItsData) {
    const Ref<Mesh> mesh = square();
    mesh->vert_normals.resize(4, Vec3f{0, 0, 1});
    mesh->num_uv_mappings = 1;
    mesh->addMaterialUsed("default0");
    mesh->addMaterialUsed("b");
    mesh->addUVs({Vec2f{0.25f, 0.5f}});
    addTriangle(*mesh, {0, 1, 2});
    addQuad(*mesh, {0, 1, 2, 3});

    std::string bytes("\1\0\0\0default0b", 13);
    for (const Vec3f& v : mesh->vert_positions)
        appendBytes(bytes, v);
    for (const Vec3f& n : mesh->vert_normals)
        appendBytes(bytes, n);
    const u64 layout_at = bytes.size();
    bytes.append(4, '\0');
    appendBytes(bytes, mesh->uv_pairs[0]);
    appendBytes(bytes, mesh->triangles[0]);
    appendBytes(bytes, mesh->quads[0]);

    u64 num_bytes = 0;
    EXPECT_EQ(mesh->checksum(num_bytes), referenceCRC(bytes));
    EXPECT_EQ(num_bytes, 4u + 9 + 4 * 12 + 4 * 12 + 8 + 28 + 36);

    mesh->uv_layout = 1;
    bytes[layout_at] = 1;
    u64 num_bytes_of_layout_1 = 0;
    EXPECT_EQ(mesh->checksum(num_bytes_of_layout_1), referenceCRC(bytes));
    EXPECT_EQ(num_bytes_of_layout_1, num_bytes);
    EXPECT_EQ(Mesh().checksum(num_bytes), referenceCRC(std::string(8, '\0')));
    EXPECT_EQ(num_bytes, 4u);
}

} // namespace
} // namespace Quenza
