// SPDX-License-Identifier: MIT
#include "tools/tool_fixture.h"

#include <limits>

namespace {

/// One edit of the sound scene, and what `check` must say of it.
struct Damage {
    const char* name;
    std::string from;
    std::string to;
    const char* fault;
};

const Damage DAMAGES[] = {
    // The document
    {"root_is_no_scene", "<scene>\n", "<scenery>\n", "Error reading end tag."},
    {"end_tag_of_another_element", "</reinhard>", "</linear>", "Error reading end tag."},
    {"text_behind_the_end", "</scene>\n", "</scene>\nmore", "text outside of the root element"},
    {"zero_byte", "A test", std::string("A\0test", 6), "a zero byte stands in the text"},
    {"comment_not_closed", "<metadata>", "<!-- <metadata>", "the comment isn't closed"},
    {"lone_less_than", "A test", "A < test", "'<'"},
    // Elements and values
    {"unknown_node", "<sphere>", "<cube></cube><sphere>", "Unknown element type"},
    {"mesh_index_out_of_bounds", "<external>\n\t\t\t<path>scene_meshes/square.qzmesh</path>\n\t\t</external>",
     "<embedded_2><used_material_name>m</used_material_name><vertex pos=\"0 0 0\"/><vertex pos=\"1 0 0\"/>"
     "<vertex pos=\"0 1 0\"/><triangle v=\"0 1 3\" m=\"0\"/></embedded_2>",
     "vertex index is out of bounds. (vertex index=3)"},
    {"include_of_itself", "<metadata>", "<include><pathname>damaged.qzs</pathname></include><metadata>",
     "damaged.qzs"},
    // Nodes and their references
    {"uid_twice", "<uid>10</uid>", "<uid>8</uid>", "sphere \"Ball\": UID 8 is in use by mesh \"Square\""},
    {"two_cameras", "<tonemapping>",
     "<camera><aperture_radius>1</aperture_radius><focus_distance>1</focus_distance><sensor_width>1"
     "</sensor_width><lens_sensor_dist>1</lens_sensor_dist><up>0 0 1</up><forwards>0 1 0</forwards><keyframe>"
     "<time>0</time><pos>0 0 0</pos><rotation_quaternion><axis>0 0 1</axis><angle>0</angle>"
     "</rotation_quaternion></keyframe><camera_type>spherical</camera_type></camera><tonemapping>",
     "camera \"\": this is the second node of its type; a scene has one at most"},
    {"geometry_of_nothing", "<geometry_uid>8", "<geometry_uid>99",
     "model2 \"Floor\": \"geometry_uid\" 99 leads to no node"},
    {"geometry_that_is_none", "<geometry_uid>8", "<geometry_uid>6",
     "model2 \"Floor\": \"geometry_uid\" 6 leads to a \"material\" node"},
    {"material_of_nothing", "<material_uid>7", "<material_uid>99",
     "model2 \"Floor\": \"material_uid\" 99 leads to no node"},
    {"too_few_materials", "<material_uid>7</material_uid>", "",
     "model2 \"Floor\": the mesh refers to 2 materials and the model has 1"},
    {"sphere_without_material", "<radius>0.5</radius>\n\t\t<material_uid>6",
     "<radius>0.5</radius>\n\t\t<material_uid>8",
     "sphere \"Ball\": \"material_uid\" 8 leads to a \"mesh\" node"},
    {"emission_of_no_material", "<emission_scale>\n\t\t\t<material_uid>6",
     "<emission_scale>\n\t\t\t<material_uid>60", "model2 \"Floor\": Failed to find node with UID 60"},
    {"section_of_nothing", "<object_list>\n\t\t\t<uid>9", "<object_list>\n\t\t\t<uid>90",
     "section_plane \"\": \"object_list\" 90 leads to no node"},
    {"image_too_wide", "<width>320", "<width>2000000000",
     "renderer_settings \"\": \"width\" 2000000000 is out of bounds: an image has 1 to 65536 pixels a side"},
    {"image_of_no_height", "<height>240", "<height>0", "\"height\" 0 is out of bounds"},
    // Files
    {"image_missing", "images/wood.png", "images/oak.png",
     "material \"Wood\": albedo: file 'images/oak.png' is missing"},
    {"obstacle_missing", "<aperture_shape>",
     "<obstacle_map><path>dust.png</path></obstacle_map><aperture_shape>",
     "camera \"Eye\": file 'dust.png' is missing"},
    {"image_is_a_folder", "images/wood.png", "images",
     "material \"Wood\": albedo: 'images' is no ordinary file"},
    {"mesh_missing", "square.qzmesh", "circle.qzmesh",
     "mesh \"Square\": file 'scene_meshes/circle.qzmesh' is missing"},
    {"mesh_of_unknown_format", "scene_meshes/square.qzmesh", "images/wood.png", "key 'png' not found"},
};

TEST_F(Tool, CheckNamesTheFaultOfEachDamagedScene) {
    for (const Damage& damage : DAMAGES) {
        SCOPED_TRACE(damage.name);
        write("damaged.qzs", edited(damage.from, damage.to));
        const Outcome outcome = run({"check", path("damaged.qzs")});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.out.find(damage.fault), std::string::npos) << outcome.out;
        EXPECT_EQ(outcome.errors, "");
    }
}

TEST_F(Tool, CheckNamesTheFaultOfEachCutScene) {
    const std::string text = soundScene();
    for (const size_t length : {size_t(0), size_t(20), text.find("<camera>") + 4, text.size() - 4}) {
        write("damaged.qzs", text.substr(0, length));
        const Outcome outcome = run({"check", path("damaged.qzs")});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(outcome.out.find(": 1 fault\n"), std::string::npos) << outcome.out;
    }
    EXPECT_NE(run({"check", path("none.qzs")}).out.find("'" + path("none.qzs") + "'"), std::string::npos);
}

TEST_F(Tool, CheckNamesTheFaultOfEachDamagedMesh) {
    const std::string sound = read("scene_meshes/square.qzmesh");
    const auto with = [&](size_t offset, const std::string& bytes) {
        std::string damaged = sound;
        return damaged.replace(offset, bytes.size(), bytes);
    };
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const std::string nan_bytes(reinterpret_cast<const char*>(&nan), sizeof nan);
    // magic, version, UV sets, names, no set names, count of vertices
    const size_t vertices = 12 + 4 + 4 + 5 + 4 + 10 + 4 + 4;
    const struct {
        const char* name;
        std::string bytes;
        const char* fault;
    } cases[] = {
        {"empty", "", "Read failed."},
        {"cut", sound.substr(0, sound.size() - 1), "Error while reading from '"},
        {"magic", with(0, "x"), "Invalid magic number."},
        {"version", with(4, "\x04"), "Unsupported format version."},
        {"count", with(vertices - 4, "\xFF\xFF\xFF\x7F"), "Read failed."},
        {"nan", with(vertices + 12, nan_bytes), "vertex 1 isn't finite"},
        {"nan_uv", with(sound.size() - 36 - 4 - 28 - 4 - 4 * 8, nan_bytes), "UV 0 isn't finite"},
        {"material", with(sound.size() - 4, "\xFF\xFF\xFF\xFF"),
         "quad 0 has no material: its index is 4294967295"},
        {"index", with(sound.size() - 36, "\x09"), "Quad vertex index is out of bounds. (vertex index=9)"},
    };
    for (const auto& test : cases) {
        SCOPED_TRACE(test.name);
        write("scene_meshes/square.qzmesh", test.bytes);
        const Outcome outcome = run({"check", path("scene.qzs")});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_NE(
            outcome.out.find(std::string("mesh \"Square\": 'scene_meshes/square.qzmesh': ") + test.fault),
            std::string::npos)
            << outcome.out;
        const Outcome alone = run({"check", path("scene_meshes/square.qzmesh")});
        EXPECT_EQ(alone.out.rfind(path("scene_meshes/square.qzmesh") + ": " + test.fault, 0), 0u)
            << alone.out;
    }
}

/// Nodes without a UID get numbers that are free, also where the highest UID leaves none behind it.
TEST_F(Tool, CheckBlamesNoNodeWithoutUID) {
    std::string text = edited("<uid>11</uid>", "<uid>4294967294</uid>");
    for (const char* const uid : {"<uid>1</uid>", "<uid>3</uid>", "<uid>10</uid>"})
        text.replace(text.find(uid), std::string(uid).size(), "");
    write("in.qzs", text);
    EXPECT_EQ(run({"check", path("in.qzs")}).out, path("in.qzs") + ": no faults\n");
}

} // namespace
