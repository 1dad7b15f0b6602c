// SPDX-License-Identifier: MIT
#include "support/system_texts.h"
#include "tools/tool_fixture.h"

#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::json;

TEST_F(Tool, CheckFindsNothingInASoundScene) {
    const Outcome outcome = run({"check", path("scene.qzs")});
    EXPECT_EQ(outcome.out, path("scene.qzs") + ": no faults\n");
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST_F(Tool, CheckListsEveryFaultOfEveryFile) {
    std::string text = soundScene();
    const auto replace = [&](const std::string& from, const std::string& to) {
        const size_t at = text.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        text.replace(at, from.size(), to);
    };
    replace("images/wood.png", "images/gone.png");
    replace("<geometry_uid>8", "<geometry_uid>80");
    replace("<material_uid>7", "<material_uid>8");
    replace("<aperture_radius>0.002", "<aperture_radius>0");
    replace("<uid>10</uid>", "<uid>9</uid>");
    write("bad.qzs", text);
    const Outcome outcome = run({"check", path("scene.qzs"), path("bad.qzs")});
    const std::string bad = path("bad.qzs") + ": ";
    EXPECT_EQ(outcome.out,
              path("scene.qzs") + ": no faults\n" + bad +
                  "Aperture_radius must be greater than zero (e.g. 0.001)   (In element 'aperture_radius', "
                  "around line 29, column 9)\n" +
                  bad + "line 147, column 5: sphere \"Ball\": UID 9 is in use by model2 \"Floor\"\n" + bad +
                  "line 85, column 5: material \"Wood\": albedo: file 'images/gone.png' is missing\n" + bad +
                  "line 118, column 5: model2 \"Floor\": \"geometry_uid\" 80 leads to no node\n" + bad +
                  "line 118, column 5: model2 \"Floor\": \"material_uid\" 8 leads to a \"mesh\" node\n" +
                  bad +
                  "line 162, column 5: section_plane \"\": \"object_list\" 9 leads to a \"sphere\" node\n" +
                  bad + "6 faults; there may be more in 1 element that could not be read to the end\n");
    EXPECT_EQ(outcome.status, 1);
}

TEST_F(Tool, CheckDoesNotBlameReferencesToWhatItCouldNotRead) {
    write("bad.qzs", edited("<random_triangle_colours>false", "<random_triangle_colours>maybe"));
    const Outcome outcome = run({"check", path("bad.qzs")});
    EXPECT_EQ(std::count(outcome.out.begin(), outcome.out.end(), '\n'), 2) << outcome.out;
    EXPECT_NE(outcome.out.find("(In element 'random_triangle_colours', around line 80, column 13)\n"),
              std::string::npos)
        << outcome.out;
}

TEST_F(Tool, CheckTellsMachines) {
    write("bad.qzs", edited("images/wood.png", "images/g\xFFne.png"));
    const Outcome outcome = run({"check", "--json", path("scene.qzs"), path("missing.qzs")});
    EXPECT_EQ(outcome.status, 1);
    const Json report = Json::parse(outcome.out);
    EXPECT_EQ(report["faults"], 1);
    ASSERT_EQ(report["files"].size(), 2u);
    EXPECT_EQ(report["files"][0], Json({{"path", path("scene.qzs")},
                                        {"faults", Json::array()},
                                        {"missing_files", Json::array()},
                                        {"unread_elements", 0}}));
    EXPECT_EQ(report["files"][1]["path"], path("missing.qzs"));
    EXPECT_EQ(report["files"][1]["faults"].size(), 1u);
    EXPECT_EQ(Json::parse(run({"check", "--json", path("scene.qzs")}).out)["faults"], 0);
}

TEST_F(Tool, CheckGoesThroughTheScenesOfAQueue) {
    write("gone.qzs", edited("images/wood.png", "images/gone.png"));
    write("anim.qzq",
          "<render_queue><item><scene_path>" + path("scene.qzs") + "</scene_path></item><item><scene_path>" +
              path("gone.qzs") +
              "</scene_path><seed>7</seed></item><item><halt_time>x</halt_time></item></render_queue>");
    const Outcome outcome = run({"check", path("anim.qzq")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.out.find(path("anim.qzq") + ": 1 fault\n" + path("scene.qzs") + ": no faults\n"),
              std::string::npos)
        << outcome.out;
    EXPECT_NE(outcome.out.find(path("gone.qzs") + ": 1 fault\n"), std::string::npos) << outcome.out;
}

TEST_F(Tool, InfoTellsWhatASceneHolds) {
    const Outcome outcome = run({"info", path("scene.qzs")});
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(
        outcome.out,
        "Scene: " + path("scene.qzs") +
            "\n\nNodes:\n  background_settings 1\n  camera 1\n  material 2\n  mesh 1\n  metadata 1\n"
            "  model2 1\n  renderer_settings 1\n  section_plane 1\n  sphere 1\n  tonemapping 1\n"
            "\nMaterials:\n  6 \"Red\" diffuse\n  7 \"Wood\" diffuse\n"
            "\nMeshes:\n  \"Square\" 'scene_meshes/square.qzmesh': 4 vertices, 1 triangle, 1 quad, 4 UVs, "
            "2 materials, 192 B, bounds (0 0 0) to (2 1 0)\n"
            "\nFiles:\n  'images/wood.png' 69 B\n  'scene_meshes/square.qzmesh' 259 B\n"
            "\nMemory of the meshes: 192 B\n");
    const Json report = Json::parse(run({"info", "--json", path("scene.qzs")}).out);
    EXPECT_EQ(report["nodes"]["material"], 2);
    EXPECT_EQ(report["meshes"][0]["bounds_max"], Json({2, 1, 0}));
    EXPECT_EQ(report["files"][0], Json({{"path", "images/wood.png"}, {"size", 69}}));

    write("bad.qzs", edited("<diffuse>", "<glass>"));
    EXPECT_EQ(run({"info", path("bad.qzs")}).status, 1);
    write("bad.qzs", edited("images/wood.png", "images/gone.png"));
    const Outcome missing = run({"info", path("bad.qzs")});
    EXPECT_EQ(missing.status, 0);
    EXPECT_NE(missing.out.find("  'images/gone.png' is missing\n"), std::string::npos);
}

TEST_F(Tool, InfoTellsWhatAMeshHolds) {
    const Outcome outcome = run({"info", path("scene_meshes/square.qzmesh")});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.out,
              "Mesh: " + path("scene_meshes/square.qzmesh") +
                  "\n\n  4 vertices, 1 triangle, 1 quad, 4 UVs, 2 materials, 192 B, bounds (0 0 0) to "
                  "(2 1 0)\n\nMaterials:\n  \"first\"\n  \"second one\"\n");
    write("a.OBJ", "v 0 0 0\nv 3 0 0\nv 0 1 0\nf 1 2 3\n");
    EXPECT_EQ(
        Json::parse(run({"info", "--json", path("a.OBJ")}).out),
        Json::parse(R"({"path": )" + Json(path("a.OBJ")).dump() +
                    R"(, "vertices": 3, "triangles": 1, "quads": 0, "uvs": 0, "materials": 1, "memory": 64,
                 "bounds_min": [0, 0, 0], "bounds_max": [3, 1, 0], "material_names": ["default"]})"));
    write("bad.ply", "ply\nformat odd 1.0\n");
    const struct {
        const char* file;
        std::string complaint;
    } bad[] = {
        {"bad.ply", path("bad.ply") + ": could not read header."},
        {"none.obj", path("none.obj") + ": the file is missing"},
        {"none.qzs", "Failed to open XML doc from path '" + path("none.qzs") + "': " + Quenza::noSuchFile()}};
    for (const auto& test : bad) {
        const Outcome refused = run({"info", path(test.file)});
        EXPECT_EQ(refused.errors, "quenza-scene: " + test.complaint + "\n");
        EXPECT_EQ(refused.out, "");
        EXPECT_EQ(refused.status, 1);
    }
}

TEST_F(Tool, RefusesWrongCommandLines) {
    const struct {
        std::vector<std::string> words;
        std::string complaint;
    } cases[] = {
        {{}, "a command is missing"},
        {{"explode"}, "unknown command 'explode'"},
        {{"check"}, "expected: quenza-scene check [--json] FILE..."},
        {{"check", "--xml", "a.qzs"}, "unknown option '--xml'"},
        {{"info", "a.qzs", "b.qzs"}, "expected: quenza-scene info [--json] FILE"},
        {{"convert", "a.obj"}, "expected: quenza-scene convert IN OUT"},
        {{"convert", "a.OBJ", "b.qzs"},
         "can't convert '.obj' to '.qzs': .obj, .ply and .qzmesh convert to each other, and .qzs to .qzs"},
        {{"pack", "a.qzs"}, "expected: quenza-scene pack FILE.qzs OUT.zip"},
        {{"diff", "a.qzs"}, "expected: quenza-scene diff [--ignore-uids] A.qzs B.qzs"},
        {{"merge", "a", "b"}, "expected: quenza-scene merge A.qzs B.qzs OUT.qzs"},
    };
    for (const auto& test : cases) {
        const Outcome outcome = run(test.words);
        EXPECT_EQ(outcome.errors, "quenza-scene: " + test.complaint + "\nTry \"quenza-scene --help\".\n");
        EXPECT_EQ(outcome.out, "");
        EXPECT_EQ(outcome.status, 2);
    }
}

TEST_F(Tool, HelpsWithEachCommand) {
    const std::string program = run({"--help"}).out;
    for (const std::string command : {"info", "check", "convert", "pack", "diff", "merge"}) {
        const Outcome outcome = run({command, "--help"});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_EQ(outcome.out.rfind("Usage: quenza-scene " + command + " ", 0), 0u) << outcome.out;
        EXPECT_NE(program.find("\n  " + command + " "), std::string::npos) << program;
    }
}

} // namespace
