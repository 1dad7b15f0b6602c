// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"
#include "reading/scene_report.h"
#include "scene/mesh.h"
#include "support/run_program.h"

#include <cmath>

namespace {

namespace fs = std::filesystem;

/// What the scene of a document holds.
class Scene : public Session {
protected:
    void SetUp() override { install(makeRenderer("none", "")); }

    Quenza::SceneSummary exportObjects(const std::string& objects, const std::string& more = "") {
        openDocument(objects, "", more);
        EXPECT_TRUE(render());
        EXPECT_EQ(host().messages(), std::vector<std::string>{});
        const Quenza::SceneSummary scene =
            Quenza::summariseScene((userFolder() / "quickrender" / "quickrender.qzs").string());
        EXPECT_EQ(scene.faults, std::vector<std::string>{});
        return scene;
    }
    uint64_t count(const Quenza::SceneSummary& scene, const char* node) const {
        const auto found = scene.nodes.find(node);
        return found == scene.nodes.end() ? 0 : found->second;
    }
    std::string sceneText() const { return readFile(userFolder() / "quickrender" / "quickrender.qzs"); }
    /// "models meshes spheres"
    std::string counts(const std::string& objects, const std::string& more = "") {
        const Quenza::SceneSummary scene = exportObjects(objects, more);
        return std::to_string(count(scene, "model2")) + " " + std::to_string(count(scene, "mesh")) + " " +
               std::to_string(count(scene, "sphere"));
    }
};

/// A wall with two slots, an instance of it under a compositing tag, a sphere, a section plane and an exit
/// portal.
TEST_F(Scene, IsWrittenToTheByte) {
    const fs::path golden = fs::path(QUENZA_SOURCE_DIR) / "tests/end_to_end/golden";
    const Quenza::Outcome run =
        Quenza::runProgram(QUENZA_BIN_DIR "/quenza-headless",
                           {"--fixed-clock", "2026-11-24 09:05:07", "render",
                            (golden / "corner.json").string(), "--to", (folder() / "corner.qzs").string()});
    ASSERT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(readScene(folder() / "corner.qzs"), readFile(golden / "corner.qzs"));
    EXPECT_EQ(listFiles(folder() / "corner_meshes"),
              (std::vector<std::string>{"mesh_2039342014_152.qzmesh", "mesh_438071331_84.qzmesh"}));
}

TEST_F(Scene, FollowsVisibilityDownTheTree) {
    const struct {
        const char* objects;
        const char* expected;
    } cases[] = {
        {R"({"type": "Cube", "render": "off"})", "0 0 0"},
        {R"({"type": "Null", "render": "off", "children": [{"type": "Cube"}]})", "0 0 0"},
        {R"({"type": "Null", "render": "off", "children": [{"type": "Cube", "render": "on"}]})", "1 1 0"},
        {R"({"type": "Cube", "layer": "hidden", "children": [{"type": "Cube"}, {"type": "Sphere"}]})",
         "1 1 1"},
        {R"({"points": [[0,0,0],[1,0,0],[1,1,0]], "polygons": [[0,1,2]], "layer": "hidden"})", "0 0 0"},
        {R"({"type": "Array", "children": [{"type": "Cube"}]})", "7 1 0"},
        {R"({"type": "Cube", "children": [{"type": "Bend"}]})", "1 1 0"},
        {R"({"type": "Cube", "enabled": false})", "0 0 0"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(counts(test.objects, R"("layers": [{"name": "hidden", "render": false}])"), test.expected)
            << test.objects;
    }
}

TEST_F(Scene, KeepsOneMeshForEqualGeometry) {
    EXPECT_EQ(
        counts(
            R"({"type": "Cube"}, {"type": "Cube", "scale": [2, 2, 2]}, {"type": "Cube", "position": [1, 2, 3]})"),
        "3 1 0");
    EXPECT_TRUE(printed("Instances exported: 2"));
    EXPECT_EQ(counts(R"({"type": "Cube"}, {"type": "Cube", "parameters": {"1100": [1, 2, 3]}})"), "2 2 0");
    // Materials alone make no difference; tiling does.
    const std::string materials = R"("materials": [{"id": "a"}, {"id": "b"}])";
    EXPECT_EQ(counts(R"({"type": "Cube", "tags": [{"type": "Texture", "material": "a"}]},
                        {"type": "Cube", "tags": [{"type": "Texture", "material": "b"}]})",
                     materials),
              "2 1 0");
    EXPECT_EQ(counts(R"({"type": "Cube", "tags": [{"type": "Texture", "material": "a"}]},
                        {"type": "Cube", "tags": [{"type": "Texture", "material": "a", "parameters": {"1002": 0.5}}]})",
                     materials),
              "2 2 0");
}

TEST_F(Scene, DrawsPerfectSpheresExactly) {
    const char* const perfect = R"("type": "Sphere", "parameters": {"1113": true)";
    const struct {
        std::string sphere;
        const char* expected;
    } cases[] = {
        {std::string("{") + perfect + "}}", "0 0 1"},
        {std::string("{") + perfect + R"(}, "scale": [2, 2, 2]})", "0 0 1"},
        {std::string("{") + perfect + R"(}, "scale": [2, 2, 2.001]})", "1 1 0"},
        {std::string("{") + perfect + R"(, "1112": 5}})", "1 1 0"},
        {R"({"type": "Sphere", "parameters": {"1113": false}})", "1 1 0"},
        {std::string("{") + perfect + R"(}, "children": [{"type": "Bend"}]})", "1 1 0"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(counts(test.sphere), test.expected) << test.sphere;
    }
}

/// Every way in which instances can lead back to themselves ends, and gives what leads nowhere else.
TEST_F(Scene, EndsCirclesOfInstances) {
    const auto instance = [](const char* type, const char* id, const char* link, const char* children) {
        return std::string(R"({"id": ")") + id + R"(", "type": ")" + type + R"(", "parameters": {")" +
               (std::string(type) == "Instance" ? R"(1001": {"link": ")" : R"(10000": {"link": ")") + link +
               R"("})" + (std::string(type) == "Instance" ? R"(, "1002": true)" : "") +
               R"(}, "children": [)" + children + "]}";
    };
    for (const char* const type : {"Instance", "Quenza Instance"}) {
        EXPECT_EQ(counts(instance(type, "a", "a", R"({"type": "Cube"})")), "1 1 0") << type;
        exportObjects(instance(type, "a", "b", R"({"type": "Cube"})") + ", " +
                      instance(type, "b", "a", R"({"type": "Cube"})"));
        exportObjects(R"({"id": "p", "type": "Null", "children": [{"type": "Cube"}, )" +
                      instance(type, "a", "p", "") + "]}");
    }
    EXPECT_EQ(counts(R"({"id": "p", "type": "Null", "children": [{"type": "Cube"}]}, )" +
                     instance("Instance", "a", "p", "") + ", " + instance("Instance", "b", "a", "")),
              "3 1 0")
        << "an instance of an instance";
}

TEST_F(Scene, WalksFiveThousandLevels) {
    std::string objects, end;
    for (int i = 0; i < 5000; ++i) {
        objects += R"({"type": "Null", "position": [1, 0, 0], "children": [)";
        end += "]}";
    }
    EXPECT_EQ(counts(objects + R"({"type": "Cube"})" + end), "1 1 0");
    EXPECT_NE(sceneText().find("<pos>50 0 0</pos>"), std::string::npos);
}

TEST_F(Scene, TakesOddGeometry) {
    EXPECT_EQ(counts(R"({"name": "none", "points": [], "polygons": []})"), "0 0 0");
    EXPECT_EQ(counts(R"({"type": "Cube", "scale": [0, 0, 0]}, {"type": "Cube", "scale": [-1, 1, 1]})"),
              "2 1 0");
    EXPECT_NE(sceneText().find("-1 0 0 0 1 0 0 0 1"), std::string::npos) << "mirroring stays in the matrix";
    const Quenza::SceneSummary far =
        exportObjects(R"({"points": [[1e7,0,0],[1e7,0,1],[1e7,1,1]], "polygons": [[0,1,2]]})");
    EXPECT_EQ(far.meshes.at(0).bounds_max.x, 1e5f);
    // Points that become infinite on the way to metres take their object out, and nothing else.
    EXPECT_EQ(
        counts(R"({"name": "Huge", "points": [[3e38,0,0],[3e38,0,1],[3e38,1,1]], "polygons": [[0,1,2]]},
                        {"type": "Cube"})",
               R"("renderData": [{"videoPosts": [{"type": 1020896, "parameters": {"RS_UNIT": 1387}}]}])"),
        "1 1 0");
    EXPECT_TRUE(printed("Object \"Huge\" is left out: the coordinates of a point are no finite numbers."));
    exportObjects(R"({"name": "<&\"'> \u00dc \ud83d\ude00  two", "type": "Cube"})");
    EXPECT_NE(sceneText().find("<name><![CDATA[<&\"'> \xC3\x9C \xF0\x9F\x98\x80  two]]></name>"),
              std::string::npos);
}

/// The outside of a box stays outside, through the swap of space and under a mirroring matrix.
TEST_F(Scene, KeepsFacesPointingOut) {
    exportObjects(R"({"type": "Cube"})");
    const fs::path meshes = userFolder() / "quickrender" / "quickrender_meshes";
    Quenza::Mesh mesh;
    Quenza::Mesh::readFromFile((meshes / listFiles(meshes).at(0)).string(), mesh);
    ASSERT_EQ(mesh.quads.size(), 6u);
    double volume = 0.0;
    for (const Quenza::MeshQuad& quad : mesh.quads) {
        const auto corner = [&](int i) { return mesh.vert_positions[quad.vertex_indices[i]]; };
        for (const auto& [b, c] : {std::pair{1, 2}, {2, 3}}) {
            const Quenza::Vec3f p = corner(0), q = corner(b), r = corner(c);
            volume += double(p.x) * (double(q.y) * r.z - double(q.z) * r.y) +
                      double(p.y) * (double(q.z) * r.x - double(q.x) * r.z) +
                      double(p.z) * (double(q.x) * r.y - double(q.y) * r.x);
        }
    }
    EXPECT_NEAR(volume / 6.0, 8.0, 1e-5) << "a cube of 200 centimetres, counter-clockwise from the outside";
}

} // namespace
