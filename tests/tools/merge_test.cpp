// SPDX-License-Identifier: MIT
#include "tools/tool_fixture.h"

namespace {

/// The single nodes of the sound scene, that its merge with itself leaves out.
constexpr const char* LEFT_OUT = "left out of B: metadata, A has its own\n"
                                 "left out of B: renderer_settings, A has its own\n"
                                 "left out of B: camera \"Eye\", A has its own\n"
                                 "left out of B: tonemapping, A has its own\n"
                                 "left out of B: background_settings, A has its own\n";

TEST_F(Tool, MergesTwoScenes) {
    const Outcome outcome = run({"merge", path("scene.qzs"), path("scene.qzs"), path("both.qzs")});
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, std::string(LEFT_OUT) + "renamed of B: mesh \"Square\" to \"Square 2\"\n");
    EXPECT_EQ(run({"check", path("both.qzs")}).out, path("both.qzs") + ": no faults\n");
    const Outcome diff = run({"diff", path("scene.qzs"), path("both.qzs")});
    EXPECT_EQ(diff.out, "+ material 17 \"Red\"\n+ material 18 \"Wood\"\n+ mesh 19 \"Square 2\"\n"
                        "+ model2 20 \"Floor\"\n+ sphere 21 \"Ball\"\n+ section_plane 22 \"\"\n");
    const std::string both = Quenza::unixLines(read("both.qzs"));
    for (const char* const reference :
         {"<geometry_uid>19</geometry_uid>", "<material_uid>17</material_uid>", "\t\t<uid>20</uid>",
          "<material_uid>17</material_uid>\n\t\t\t<material_uid>18</material_uid>"})
        EXPECT_NE(both.find(reference), std::string::npos) << reference;
}

TEST_F(Tool, MergeTakesFromTheSecondWhatTheFirstDoesNotBring) {
    write("a.qzs",
          "<scene><sphere><uid>70</uid><name>A</name><keyframe><time>0</time><pos>0 0 1</pos>"
          "<rotation_quaternion><axis>0 0 1</axis><angle>0</angle></rotation_quaternion></keyframe>"
          "<radius>1</radius><material_uid>71</material_uid></sphere><material><uid>71</uid><name>m</name>"
          "<null_material></null_material></material></scene>");
    const Outcome outcome = run({"merge", path("a.qzs"), path("scene.qzs"), path("both.qzs")});
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(read("both.qzs").find("<width>320</width>"), std::string::npos);
    EXPECT_EQ(run({"check", path("both.qzs")}).out, path("both.qzs") + ": no faults\n");
}

TEST_F(Tool, MergeRewritesPathsOfBothScenes) {
    write("a/scene.qzs", edited("images/wood.png", "../images/wood.png"));
    std::filesystem::copy(path("scene_meshes"), path("a/scene_meshes"));
    std::filesystem::create_directory(path("out"));
    ASSERT_EQ(run({"merge", path("a/scene.qzs"), path("scene.qzs"), path("out/both.qzs")}).status, 0);
    EXPECT_EQ(run({"check", path("out/both.qzs")}).out, path("out/both.qzs") + ": no faults\n");
    EXPECT_NE(read("out/both.qzs").find("<path>../a/scene_meshes/square.qzmesh</path>"), std::string::npos);
    EXPECT_NE(read("out/both.qzs").find("<path>../scene_meshes/square.qzmesh</path>"), std::string::npos);
}

TEST_F(Tool, MergeRefusesUIDsThatDoNotFit) {
    write("high.qzs", edited("<section_plane>\n\t\t<uid>11", "<section_plane>\n\t\t<uid>4294967285"));
    const Outcome outcome = run({"merge", path("scene.qzs"), path("high.qzs"), path("both.qzs")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.errors,
              "quenza-scene: the UIDs of both scenes don't fit into one: 11 and 4294967285 are "
              "the highest\n");
    EXPECT_FALSE(has("both.qzs"));
}

} // namespace
