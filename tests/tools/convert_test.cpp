// SPDX-License-Identifier: MIT
#include "tools/tool_fixture.h"

namespace {

using Quenza::Mesh;

constexpr const char* SQUARE_OBJ = "v 0 0 0\nv 2 0 0\nv 2 1 0\nv 0 1 0\n"
                                   "vn 0 0 1\nvn 0 0 1\nvn 0 0 1\nvn 0 0 1\n"
                                   "vt 0 0\nvt 0.5 0\nvt 0.5 1\nvt 0 1\n"
                                   "usemtl first\nf 1/1/1 2/2/2 3/3/3\n"
                                   "usemtl second one\nf 1/1/1 2/2/2 3/3/3 4/4/4\n";

void expectConverted(const Outcome& outcome) {
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(Tool, ConvertsMeshesToBinaryPly) {
    expectConverted(run({"convert", path("scene_meshes/square.qzmesh"), path("out.PLY")}));
    const std::string ply = read("out.PLY");
    const std::string header =
        "ply\nformat binary_little_endian 1.0\ncomment quenza-scene\nelement vertex 4\n"
        "property float x\nproperty float y\nproperty float z\n"
        "property float nx\nproperty float ny\nproperty float nz\nelement face 2\n"
        "property list uchar uint vertex_indices\nproperty list uchar float texcoord\n"
        "property uint material_index\nend_header\n";
    ASSERT_EQ(ply.substr(0, header.size()), header);
    // vertices; per face: corners, UVs, material
    EXPECT_EQ(ply.size(), header.size() + 4 * 24 + (1 + 12 + 1 + 24 + 4) + (1 + 16 + 1 + 32 + 4));
    const std::string quad = ply.substr(ply.size() - 54, 17);
    EXPECT_EQ(quad, std::string("\x04\0\0\0\0\x01\0\0\0\x02\0\0\0\x03\0\0\0", 17));
    EXPECT_EQ(ply.substr(ply.size() - 4), std::string("\x01\0\0\0", 4));
}

TEST_F(Tool, KeepsAMeshThroughObjAndItsShapeThroughPly) {
    expectConverted(run({"convert", path("scene_meshes/square.qzmesh"), path("a.obj")}));
    expectConverted(run({"convert", path("a.obj"), path("b.qzmesh")}));
    expectConverted(run({"convert", path("b.qzmesh"), path("c.obj")}));
    EXPECT_EQ(read("c.obj"), SQUARE_OBJ);
    expectConverted(run({"convert", path("a.obj"), path("d.ply")}));
    expectConverted(run({"convert", path("d.ply"), path("e.qzmesh")}));
    Mesh mesh;
    Mesh::readFromFile(path("e.qzmesh"), mesh);
    EXPECT_EQ(mesh.vert_positions.size(), 4u);
    EXPECT_EQ(mesh.triangles.size(), 1u);
    ASSERT_EQ(mesh.quads.size(), 1u);
    EXPECT_EQ(mesh.quads[0].vertex_indices[3], 3u);
}

TEST_F(Tool, KeepsMaterialsThatNoFaceUsesAndNamesThoseWithoutAName) {
    Mesh mesh = square();
    mesh.used_materials[0] = " ";
    mesh.used_materials[1] = " second\none ";
    mesh.triangles.clear();
    mesh.quads[0].mat_index = 3; // beyond the names
    mesh.vert_normals.clear();
    Mesh::writeToFile(path("in.qzmesh"), mesh);
    expectConverted(run({"convert", path("in.qzmesh"), path("out.obj")}));
    EXPECT_NE(read("out.obj").find("usemtl material_0\nusemtl second_one\nusemtl material_3\n"
                                   "f 1/1 2/2 3/3 4/4\n"),
              std::string::npos)
        << read("out.obj");
}

TEST_F(Tool, WritesNothingWhenAMeshCannotBeConverted) {
    const std::string mesh = read("scene_meshes/square.qzmesh");
    write("cut.qzmesh", mesh.substr(0, mesh.size() - 1));
    write("five.obj", "v 0 0 0\nv 1 0 0\nv 1 1 0\nv 0 1 0\nv 0 2 0\nf 1 2 3 4 5\n");
    write("magic.qzmesh", "x" + mesh.substr(1));
    write("points.obj", "v 0 0 0\nv 1 0 0\n");
    write("out.ply", "before");
    const struct {
        std::string in;
        std::string complaint;
    } cases[] = {
        {"cut.qzmesh", "Error while reading from '" + path("cut.qzmesh") + "'."},
        {"magic.qzmesh", path("magic.qzmesh") + ": Invalid magic number."},
        {"five.obj", path("five.obj") + ": Invalid number of vertices in face: 5"},
        {"points.obj", "'" + path("points.obj") +
                           "' has 0 vertices and no faces, so nothing is written: save the "
                           "model again with its faces"},
        {"gone.obj", "'" + path("gone.obj") + "' is missing"},
    };
    for (const auto& test : cases) {
        const Outcome outcome = run({"convert", path(test.in), path("out.ply")});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.errors.rfind("quenza-scene: " + test.complaint, 0), 0u) << outcome.errors;
        EXPECT_EQ(read("out.ply"), "before");
    }
    for (const std::string name : {"out.obj", "out.ply", "out.qzmesh"}) {
        const std::string out = path("no/folder/" + name);
        const Outcome outcome = run({"convert", path("scene_meshes/square.qzmesh"), out});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.errors.find("'" + out + "'"), std::string::npos) << outcome.errors;
    }
    std::filesystem::create_directory(path("folder.obj"));
    EXPECT_EQ(run({"convert", path("scene_meshes/square.qzmesh"), path("folder.obj")}).errors,
              "quenza-scene: can't write '" + path("folder.obj") + "': it is no ordinary file\n");
}

TEST_F(Tool, RewritesAScene) {
    expectConverted(run({"convert", path("scene.qzs"), path("once.qzs")}));
    expectConverted(run({"convert", path("once.qzs"), path("twice.qzs")}));
    EXPECT_EQ(read("twice.qzs"), read("once.qzs"));
    EXPECT_EQ(run({"check", path("once.qzs")}).status, 0);
    EXPECT_EQ(run({"diff", path("scene.qzs"), path("once.qzs")}).out, "");
}

TEST_F(Tool, RewritesPathsForAnotherFolder) {
    std::filesystem::create_directories(path("a/b"));
    expectConverted(run({"convert", path("scene.qzs"), path("a/b/moved.qzs")}));
    EXPECT_NE(read("a/b/moved.qzs").find("<path>../../images/wood.png</path>"), std::string::npos);
    EXPECT_NE(read("a/b/moved.qzs").find("<path>../../scene_meshes/square.qzmesh</path>"), std::string::npos);
    EXPECT_EQ(run({"check", path("a/b/moved.qzs")}).status, 0);
}

/// Older models have their mesh loaded while the scene is read.
TEST_F(Tool, WritesAMeshThatWasLoadedInItsScaleOnce) {
    std::string text =
        edited("<model2>", "<model><pos>0 0 0</pos><mesh_name>Square</mesh_name></model><model2>");
    const std::string scale = "<normal_smoothing>false</normal_smoothing>\n\t\t<scale>1";
    text.replace(text.find(scale) + scale.size() - 1, 1, "3");
    text.replace(text.find("<name>Red"), 9, "<name>first");
    text.replace(text.find("<name>Wood"), 10, "<name>second one");
    write("in.qzs", text);
    expectConverted(run({"convert", path("in.qzs"), path("out.qzs")}));
    for (const char* const name : {"in.qzs", "out.qzs"}) {
        const Outcome info = run({"info", path(name)});
        EXPECT_NE(info.out.find("bounds (0 0 0) to (6 3 0)"), std::string::npos) << info.out << info.errors;
    }
}

TEST_F(Tool, MakesFilesOfMeshesInTheScene) {
    const std::string mesh = "<external>\n\t\t\t<path>scene_meshes/square.qzmesh</path>\n\t\t</external>";
    std::string text = edited(
        mesh, "<embedded_2><used_material_name>m</used_material_name><vertex pos=\"0 0 0\"/>"
              "<vertex pos=\"1 0 0\"/><vertex pos=\"0 1 0\"/><triangle v=\"0 1 2\" m=\"0\"/></embedded_2>");
    const std::string scale = "<normal_smoothing>false</normal_smoothing>\n\t\t<scale>1";
    text.replace(text.find(scale) + scale.size() - 1, 1, "3");
    write("in.qzs", text);
    expectConverted(run({"convert", path("in.qzs"), path("out.qzs")}));
    const Outcome info = run({"info", path("out.qzs")});
    EXPECT_NE(info.out.find("'" + Quenza::nativeText("out_meshes/mesh_")), std::string::npos) << info.out;
    EXPECT_NE(info.out.find("bounds (0 0 0) to (3 3 0)"), std::string::npos)
        << "scaled once, not twice: " << info.out;
}

} // namespace
