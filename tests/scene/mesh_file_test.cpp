// SPDX-License-Identifier: MIT
#include "scene/mesh_file.h"

#include "foundation/string_utils.h"
#include "scene/mesh.h"
#include "scene/xml_text.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Quenza {
namespace {

std::string bytesOf(std::string hex) {
    hex.erase(std::remove(hex.begin(), hex.end(), ' '), hex.end());
    const std::vector<unsigned char> bytes = hexStringToBytes(hex);
    return std::string(bytes.begin(), bytes.end());
}

// One mesh in the files of all three versions: two vertices with normals, one UV set, a triangle, a quad.
const std::string HEADER = "6F435300";
const std::string VERTICES = "01000000"
                             "02000000"
                             "02000000 6130"
                             "00000000" // "a0" and ""
                             "00000000"
                             "02000000 0000803F 00000040 00004040 000000BF 00000000 00008041"
                             "02000000 00000000 00000000 0000803F 00000000 0000803F 00000000";
const std::string UVS_AND_TRIANGLES =
    "01000000 0000003E 0000403F"
    "01000000 00000000 01000000 00000000 00000000 00000000 00000000 03000000";
const std::string QUADS = "01000000 00000000 01000000 00000000 01000000"
                          "00000000 00000000 00000000 00000000 04000000";
const std::string VERSION_1 = HEADER + "01000000" + VERTICES + UVS_AND_TRIANGLES;
const std::string VERSION_2 = HEADER + "02000000" + VERTICES + UVS_AND_TRIANGLES + QUADS;
const std::string VERSION_3 = HEADER + "03000000" + VERTICES + "01000000" + UVS_AND_TRIANGLES + QUADS;

Ref<Mesh> sampleMesh() {
    const Ref<Mesh> mesh = new Mesh;
    mesh->num_uv_mappings = 1;
    mesh->used_materials = {String("a0"), String()};
    mesh->vert_positions = {Vec3f{1, 2, 3}, Vec3f{-0.5f, 0, 16}};
    mesh->vert_normals = {Vec3f{0, 0, 1}, Vec3f{0, 1, 0}};
    mesh->uv_layout = 1;
    mesh->uv_pairs = {Vec2f{0.125f, 0.75f}};
    mesh->triangles = {MeshTriangle{{0, 1, 0}, {0, 0, 0}, 3}};
    mesh->quads = {MeshQuad{{0, 1, 0, 1}, {0, 0, 0, 0}, 4}};
    return mesh;
}

template <class T>
bool sameElements(const Vector<T>& a, const Vector<T>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end());
}

class MeshFileTest : public testing::Test {
protected:
    std::string read(const std::string& bytes, Mesh& mesh) {
        writeBytes(path, bytes);
        return thrownText([&] { Mesh::readFromFile(path, mesh); });
    }
    std::string read(const std::string& bytes) {
        Mesh mesh;
        return read(bytes, mesh);
    }

    const TempDir dir;
    const String path = dir / "m.qzmesh";
    const std::string read_error = "Error while reading from '" + path.toStdString() + "'.";
};

TEST_F(MeshFileTest, WritesVersion3) {
    Mesh::writeToFile(path, *sampleMesh());
    EXPECT_EQ(fileBytes(path), bytesOf(VERSION_3));
    Mesh::writeToFile(path, Mesh());
    EXPECT_EQ(fileBytes(path), bytesOf(HEADER + "03000000" + std::string(8 * 9, '0')));
}

TEST_F(MeshFileTest, ReadsAllVersions) {
    const Ref<Mesh> expected = sampleMesh();
    const std::string* const files[] = {&VERSION_1, &VERSION_2, &VERSION_3};
    for (u32 version = 1; version <= 3; ++version) {
        Mesh mesh;
        EXPECT_EQ(read(bytesOf(*files[version - 1]) + "trailing", mesh), "no exception");
        EXPECT_EQ(mesh.num_uv_mappings, 1u);
        EXPECT_TRUE(sameElements(mesh.used_materials, expected->used_materials));
        EXPECT_TRUE(sameElements(mesh.vert_positions, expected->vert_positions));
        EXPECT_TRUE(sameElements(mesh.vert_normals, expected->vert_normals));
        EXPECT_EQ(mesh.uv_layout, version == 3 ? 1u : 0u);
        EXPECT_TRUE(sameElements(mesh.uv_pairs, expected->uv_pairs));
        EXPECT_TRUE(sameElements(mesh.triangles, expected->triangles));
        EXPECT_EQ(mesh.quads.size(), version == 1 ? 0u : 1u);
        EXPECT_EQ(mesh.num_materials_referenced, 0u) << "the reader doesn't end the model";
    }
}

TEST_F(MeshFileTest, RefusesWhatItDoesNotKnow) {
    EXPECT_EQ(read(""), "Read failed.");
    EXPECT_EQ(read(bytesOf("6F435301 03000000")), "Invalid magic number.");
    EXPECT_EQ(read(bytesOf(HEADER)), "Read failed.");
    EXPECT_EQ(read(bytesOf(HEADER + "00000000")), "Unsupported format version.");
    EXPECT_EQ(read(bytesOf(HEADER + "04000000")), "Unsupported format version.");
    EXPECT_EQ(read(bytesOf(HEADER + "03000000" + VERTICES + "02000000" + UVS_AND_TRIANGLES + QUADS)),
              "Invalid uv_layout value 2");
    EXPECT_EQ(read(bytesOf(HEADER + "03000000 00000000 00000080")), "Vector too long.");
    EXPECT_EQ(read(bytesOf(HEADER + "03000000 00000000 01000000 01040000") + std::string(1025, 'n')),
              "String too long.");
    EXPECT_EQ(thrownText([&] {
                  Mesh mesh;
                  Mesh::readFromFile(dir / "none", mesh);
              }),
              "Failed to open file '" + (dir / "none").toStdString() + "' for reading.");
}

// Counts may ask for no more than the file holds: 0x7FFFFFFF vertices would be 24 GiB.
TEST_F(MeshFileTest, TakesNoMemoryForCountsBeyondTheFile) {
    const std::string start = HEADER + "03000000 00000000 00000000 00000000 FFFFFF7F";
    EXPECT_EQ(read(bytesOf(start + "00000000")), "Read failed.");
    EXPECT_EQ(read(bytesOf(HEADER + "03000000 00000000 FFFFFF7F")), "Read failed.");
}

TEST_F(MeshFileTest, FailsAtEveryTruncation) {
    for (const std::string* file : {&VERSION_1, &VERSION_2, &VERSION_3}) {
        const std::string whole = bytesOf(*file);
        const u64 last_record = file == &VERSION_1 ? 28 : 36;
        for (u64 size = 0; size < whole.size(); ++size)
            ASSERT_EQ(read(whole.substr(0, size)),
                      size < whole.size() - last_record ? "Read failed." : read_error);
    }
}

TEST_F(MeshFileTest, SurvivesEveryBitFlip) {
    const std::string whole = bytesOf(VERSION_3);
    for (u64 bit = 0; bit < whole.size() * 8; ++bit) {
        std::string flipped = whole;
        flipped[bit / 8] = char(flipped[bit / 8] ^ (1 << bit % 8));
        Mesh mesh;
        const std::string text = read(flipped, mesh);
        ASSERT_TRUE(text == "no exception" || text == "Read failed." || text == "Invalid magic number." ||
                    text == "Unsupported format version." || text == "Vector too long." ||
                    text == "String too long." || text == read_error ||
                    text.substr(0, 24) == "Invalid uv_layout value ")
            << text;
        if (text == "no exception")
            thrownText([&mesh] { mesh.checkAllIndices(); });
    }
}

TEST_F(MeshFileTest, LimitsMaterialNames) {
    Mesh mesh;
    mesh.addMaterialUsed(String(1024, 'n'));
    Mesh::writeToFile(path, mesh);
    Mesh again;
    EXPECT_EQ(read(fileBytes(path), again), "no exception");
    EXPECT_EQ(again.used_materials[0].size(), 1024u);
    mesh.addMaterialUsed(String(1025, 'n'));
    EXPECT_EQ(thrownText([&] { Mesh::writeToFile(dir / "long", mesh); }), "String too long.");
    EXPECT_FALSE(exists(dir / "long"));
}

TEST_F(MeshFileTest, TellsWhyItCannotWrite) {
    const Ref<Mesh> mesh = sampleMesh();
    mesh->uv_pairs.push_back({0, 0});
    mesh->num_uv_mappings = 3;
    EXPECT_EQ(thrownText([&] { Mesh::writeToFile(path, *mesh); }),
              "Mesh uv_pairs.size() must be a multiple of mesh.num_uv_mappings");
    mesh->num_uv_mappings = 0;
    const std::string missing = (dir / "missing/m").toStdString();
    EXPECT_EQ(thrownText([&] { Mesh::writeToFile(missing, *mesh); }),
              "Failed to open file '" + missing + "' for writing.");
#ifdef __linux__
    writeBytes(path, "old");
    std::filesystem::create_symlink("/dev/full", (path + ".partial").toStdString());
    EXPECT_EQ(thrownText([&] { Mesh::writeToFile(path, *mesh); }),
              "Error while writing to '" + path.toStdString() + "'.");
    EXPECT_EQ(fileBytes(path), "old");
    EXPECT_TRUE(exists(path + ".partial")) << "what was written stays under that name";
#endif
}

TEST(MeshFileNameTest, NamesFilesAfterTheirContent) {
    EXPECT_EQ(getMeshDirectory(nativeText("/out"), nativeText("/out/my.scene.qzs")),
              nativeText("/out/my.scene_meshes"));
    EXPECT_EQ(getMeshDirectory("", "s.qzs"), "s_meshes");
    const Ref<Mesh> mesh = sampleMesh();
    u64 num_bytes = 0;
    const std::string checksum = toString(mesh->checksum(num_bytes));
    EXPECT_EQ(num_bytes, 4u + 2 + 24 + 24 + 8 + 28 + 36);
    EXPECT_EQ(getMeshFilePath(nativeText("/out"), "s.qzs", *mesh),
              nativeText("/out/s_meshes/mesh_" + checksum + "_126.qzmesh"));
    EXPECT_EQ(getMeshFileName(*sampleMesh()), getMeshFileName(*mesh));
}

} // namespace
} // namespace Quenza
