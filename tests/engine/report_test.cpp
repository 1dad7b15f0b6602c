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
        Mesh::writeToFile(meshPath("good"), square());
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
    static std::string model(int uid, int geometry, const std::string& materials) {
        return "<model2><uid>" + std::to_string(uid) + "</uid><name>M</name><geometry_uid>" +
               std::to_string(geometry) +
               "</geometry_uid><rotation><matrix>1 0 0 0 1 0 0 0 "
               "1</matrix></rotation><keyframe><time>0</time>"
               "<pos>0 0 0</pos><rotation_quaternion><axis>0 0 1</axis><angle>0</angle></rotation_quaternion>"
               "</keyframe><materials>" +
               materials + "</materials></model2>\n";
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

TEST_F(SceneReport, NamesFaultsWithTheirPlace) {
    const SceneSummary scene = summarise(material(1) + mesh(2, "gone") + model(3, 9, ONE));
    EXPECT_EQ(scene.faults, (std::vector<std::string>{
                                "line 4, column 1: mesh \"q\": file 'scene_meshes/gone.qzmesh' is missing",
                                "line 5, column 1: model2 \"M\": \"geometry_uid\" 9 leads to no node"}));
    EXPECT_EQ(scene.missing_files, std::vector<std::string>{"scene_meshes/gone.qzmesh"});
}

TEST_F(SceneReport, RefusesFilesThatAreNoScene) {
    const auto faultsOf = [this](const std::string& text) {
        FileUtils::writeEntireFile(scenePath(), text);
        return summariseScene(scenePath()).faults;
    };
    const std::string failed = "failed to load XML doc from path '" + scenePath() + "': ";
    EXPECT_EQ(faultsOf("<queue/>"), std::vector<std::string>{"Invalid root element 'queue'"});
    EXPECT_EQ(faultsOf(std::string("<scene>\0</scene>", 16)),
              std::vector<std::string>{failed + "a zero byte stands in the text  (Line 1, column 8.)"});
    EXPECT_EQ(faultsOf("<scene>\n<mesh><uid>1</uid>"),
              std::vector<std::string>{failed + "Error reading Element value.  (Line 2, column 19.)"});
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
