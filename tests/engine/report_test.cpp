// SPDX-License-Identifier: MIT
#include "engine/report.h"
#include "foundation/file_utils.h"
#include "reading/scene_report.h"
#include "scene/mesh.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace {

namespace fs = std::filesystem;
using namespace Quenza;

class SceneReport : public ::testing::Test {
protected:
    SceneReport() {
        std::string name = (fs::temp_directory_path() / "quenza-report-XXXXXX").string();
        folder_ = mkdtemp(name.data());
        fs::create_directory(folder_ / "scene_meshes");
        Mesh mesh = square();
        Mesh::writeToFile(meshPath("good"), mesh);
        mesh.quads[0].vertex_indices[2] = 4;
        Mesh::writeToFile(meshPath("index"), mesh);
        mesh = square();
        mesh.vert_positions[1].y = std::numeric_limits<float>::quiet_NaN();
        Mesh::writeToFile(meshPath("nan"), mesh);
        FileUtils::writeEntireFile(meshPath("magic"), std::string("no mesh at all"));
    }
    ~SceneReport() override { fs::remove_all(folder_); }

    static Mesh square() {
        Mesh mesh;
        mesh.setMaxNumTexcoordSets(1);
        mesh.addMaterialUsed("default0");
        for (const Vec3f& p : {Vec3f{0, 0, 0}, Vec3f{2, 0, 0}, Vec3f{2, 1, 0}, Vec3f{0, 1, 0}}) {
            mesh.addVertex(p);
            Vector<Vec2f> uv;
            uv.push_back({p.x, p.y});
            mesh.addUVs(uv);
        }
        const u32 corners[] = {0, 1, 2, 3};
        mesh.addQuad(corners, corners, 0);
        mesh.endOfModel();
        return mesh;
    }
    String meshPath(const std::string& name) const {
        return (folder_ / "scene_meshes" / (name + ".qzmesh")).string();
    }
    std::string scenePath() const { return (folder_ / "scene.qzs").string(); }

    static std::string material(int uid) {
        return "<material><uid>" + std::to_string(uid) +
               "</uid><name>m</name><null_material></null_material></material>\n";
    }
    static std::string mesh(int uid, const std::string& file) {
        return "<mesh><uid>" + std::to_string(uid) + "</uid><name>q</name><external><path>scene_meshes/" +
               file + ".qzmesh</path></external></mesh>\n";
    }
    static std::string model(int uid, int geometry, const std::string& materials,
                             const std::string& rest = "<rotation/><keyframe/>") {
        return "<model2><uid>" + std::to_string(uid) + "</uid><name>M</name><geometry_uid>" +
               std::to_string(geometry) + "</geometry_uid>" + rest + "<materials>" + materials +
               "</materials></model2>\n";
    }
    static std::string camera(const std::string& radius, const std::string& type,
                              const std::string& rest = "<keyframe/>") {
        return "<camera><uid>1</uid><name>C</name><aperture_radius>" + radius + "</aperture_radius>" + rest +
               "<camera_type>" + type + "</camera_type></camera>\n";
    }
    SceneSummary summarise(const std::string& nodes) const {
        FileUtils::writeEntireFile(scenePath(), "<?xml version=\"1.0\"?>\n<scene>\n" + nodes + "</scene>\n");
        return summariseScene(scenePath());
    }

    fs::path folder_;
};

constexpr const char* ONE = "<material_uid>1</material_uid>";

TEST_F(SceneReport, CountsWhatASoundSceneHolds) {
    const SceneSummary scene =
        summarise(material(1) + mesh(2, "good") + model(3, 2, ONE) + model(4, 2, std::string(ONE) + ONE));
    EXPECT_EQ(scene.faults, std::vector<std::string>{});
    EXPECT_EQ(scene.nodes.at("model2"), 2u);
    ASSERT_EQ(scene.meshes.size(), 1u);
    EXPECT_EQ(scene.meshes[0].quads, 1u);
    EXPECT_EQ(scene.meshes[0].uvs, 4u);
    EXPECT_EQ(scene.meshes[0].bounds_max.x, 2.0f);
}

TEST_F(SceneReport, NamesEachFaultWithItsPlace) {
    const std::string good = material(1) + mesh(2, "good");
    const struct {
        std::string nodes;
        const char* fault;
    } cases[] = {
        {good + model(3, 9, ONE), "line 5, column 1: model2 \"M\": \"geometry_uid\" 9 leads to no node"},
        {good + model(3, 1, ONE),
         "line 5, column 1: model2 \"M\": \"geometry_uid\" 1 leads to a \"material\" node"},
        {good + model(3, 2, ""),
         "line 5, column 1: model2 \"M\": the mesh refers to 1 materials and the model has 0"},
        {good + model(3, 2, "<material_uid>2</material_uid>"),
         "line 5, column 1: model2 \"M\": \"material_uid\" 2 leads to a \"mesh\" node"},
        {good + model(3, 2, ONE, "<keyframe/>"), "line 5, column 1: model2 \"M\": \"rotation\" is missing"},
        {good + model(3, 2, ONE, "<rotation/>"), "line 5, column 1: model2 \"M\": there is no keyframe"},
        {good + material(2), "line 5, column 1: material \"m\": UID 2 is in use by another node"},
        {"<metadata/>\n", "line 3, column 1: metadata \"\": the node has no valid \"uid\""},
        {mesh(2, "gone"), "line 3, column 1: mesh \"q\": file 'scene_meshes/gone.qzmesh' is missing"},
        {mesh(2, "magic"),
         "line 3, column 1: mesh \"q\": 'scene_meshes/magic.qzmesh': Invalid magic number."},
        {mesh(2, "index"), "line 3, column 1: mesh \"q\": 'scene_meshes/index.qzmesh': quad 0 has a vertex "
                           "index out of bounds"},
        {mesh(2, "nan"), "line 3, column 1: mesh \"q\": 'scene_meshes/nan.qzmesh': vertex 1 isn't finite"},
        {"<sphere><uid>1</uid><keyframe/><material_uid>7</material_uid></sphere>\n",
         "line 3, column 1: sphere \"\": \"material_uid\" 7 leads to no node"},
        {"<section_plane><uid>1</uid><object_list><uid>5</uid></object_list></section_plane>\n",
         "line 3, column 1: section_plane \"\": \"object_list\" 5 leads to no node"},
        {"<material><uid>1</uid><name>t</name><phong><texture><path>gone.png</path></texture></phong></"
         "material>\n",
         "line 3, column 1: material \"t\": file 'gone.png' is missing"},
        {camera("0", "spherical"),
         "line 3, column 1: camera \"C\": \"aperture_radius\" must be greater than zero"},
        {camera("NaN", "spherical"),
         "line 3, column 1: camera \"C\": \"aperture_radius\" must be greater than zero"},
        {camera("0.001", "fisheye"), "line 3, column 1: camera \"C\": \"camera_type\" 'fisheye' is unknown"},
        {camera("0.001", "orthographic", ""), "line 3, column 1: camera \"C\": there is no keyframe"},
        {camera("0.001", "orthographic", "<keyframe/><obstacle_map><path>dust.png</path></obstacle_map>"),
         "line 3, column 1: camera \"C\": file 'dust.png' is missing"},
        {"<tonemapping><uid>1</uid></tonemapping><tonemapping><uid>2</uid></tonemapping>\n",
         "the scene has 2 \"tonemapping\" nodes; one is allowed"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(summarise(test.nodes).faults, std::vector<std::string>{test.fault});
    }
}

TEST_F(SceneReport, RefusesFilesThatAreNoScene) {
    const auto faultsOf = [this](const std::string& text) {
        FileUtils::writeEntireFile(scenePath(), text);
        return summariseScene(scenePath()).faults;
    };
    EXPECT_EQ(faultsOf("<queue/>"), std::vector<std::string>{"the file has no \"scene\" element"});
    EXPECT_EQ(faultsOf(std::string("<scene>\0</scene>", 16)),
              std::vector<std::string>{"a zero byte stands in the file, at byte 7"});
    const std::vector<std::string> cut = faultsOf("<scene>\n<mesh><uid>1</uid>");
    ASSERT_EQ(cut.size(), 1u);
    EXPECT_EQ(cut[0].rfind("line ", 0), 0u) << cut[0];
    EXPECT_EQ(summariseScene((folder_ / "none.qzs").string()).faults.size(), 1u);
}

TEST_F(SceneReport, GoesThroughEveryItemOfAQueue) {
    summarise(material(1));
    const std::string queue = (folder_ / "anim.qzq").string();
    FileUtils::writeEntireFile(
        queue, "<render_queue><item><scene_path>" + scenePath() +
                   "</scene_path><halt_time>-1.000000</halt_time><halt_spp>16.000000</halt_spp>"
                   "<seed>7</seed></item><item><scene_path>/gone.qzs</scene_path></item>"
                   "</render_queue>");
    engine::Options options;
    options.input = queue;
    options.switches = {{"-seed", "3"}};
    const engine::Report report = engine::makeReport(options);
    EXPECT_NE(report.text.find("  -seed 3\n"), std::string::npos);
    EXPECT_NE(report.text.find("Queue: " + queue + ", 2 items\n"), std::string::npos);
    EXPECT_NE(report.text.find("Item: seed 7, halt time -1, halt samples per pixel 16\n"), std::string::npos);
    ASSERT_EQ(report.faults.size(), 1u);
    EXPECT_EQ(report.faults[0].rfind("/gone.qzs: ", 0), 0u);
    EXPECT_NE(report.text.find("\nResult: 1 fault\n"), std::string::npos);
    EXPECT_EQ(engine::reportPath(queue), (folder_ / "anim.report.txt").string());
}

} // namespace
