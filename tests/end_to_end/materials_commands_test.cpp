// SPDX-License-Identifier: MIT
#include "end_to_end/programs.h"
#include "engine/images/image_file.h"
#include "engine/scene_loader.h"
#include "engine/session.h"

#include <atomic>
#include <cmath>

namespace {

namespace fs = std::filesystem;

const std::string WALL =
    R"({"name": "Wall", "points": [[-100, 0, 0], [-100, 200, 0], [100, 200, 0], [100, 0, 0]],
    "polygons": [[0, 1, 2, 3]], "tags": [{"type": "UVW", "uvw": [[[0, 1], [0, 0], [1, 0], [1, 1]]]},
    {"type": "Texture", "material": "a"}]})";

class MaterialsCommands : public Programs {
protected:
    MaterialsCommands() { install(makeRenderer("none", "")); }

    static engine::FloatImage picture(const fs::path& scene) {
        const auto root = engine::loadScene(scene.string(), "", "<width>96</width><height>72</height>");
        engine::SessionOptions options;
        options.halt_samples = 48;
        engine::RenderSession session(root, scene.parent_path().string(), options);
        session.run(std::atomic<bool>{false}, [](const engine::Progress&) {});
        return session.layerImages()[0];
    }
    /// Mean difference of two pictures, as a part of the first one's mean.
    static double difference(const engine::FloatImage& a, const engine::FloatImage& b) {
        EXPECT_EQ(a.rgb.size(), b.rgb.size());
        double sum = 0.0;
        double difference = 0.0;
        for (size_t i = 0; i < a.rgb.size(); ++i) {
            sum += double(a.rgb[i]);
            difference += std::abs(double(a.rgb[i]) - double(b.rgb[i]));
        }
        EXPECT_GT(sum, 0.0);
        return difference / sum;
    }
};

/// Whether an artist converts or the export does, the scene has the same materials.
TEST_F(MaterialsCommands, ConvertMakesWhatTheExportMakes) {
    writeDocument("before.json",
                  R"({"id": "a", "name": "Bricks", "parameters": {"MATERIAL_COLOR_SHADER": "checks",
                      "MATERIAL_USE_BUMP": true, "MATERIAL_BUMP_SHADER": "noise"},
                      "shaders": [{"type": "Checkerboard", "id": "checks"}, {"type": "Noise", "id": "noise"}]},
                     {"id": "b", "name": "Glass", "parameters": {"MATERIAL_USE_TRANSPARENCY": true,
                      "MATERIAL_TRANSPARENCY_REFRACTION": 1.5}},
                     {"id": "c", "name": "Mask", "parameters": {"MATERIAL_USE_ALPHA": true, "MATERIAL_USE_LUMINANCE": true,
                      "MATERIAL_ALPHA_SHADER": "ramp"}, "shaders": [{"type": "Gradient", "id": "ramp"}]})",
                  WALL + R"(, {"type": "Cube", "tags": [{"type": "Texture", "material": "b"}]},
                     {"type": "Cube", "position": [0, 300, 0], "tags": [{"type": "Texture", "material": "c"}]})");
    ASSERT_EQ(headless("materials convert before.json --save after.json"), 0) << errors;
    EXPECT_TRUE(out.ends_with("\n3 materials converted\n")) << out;
    const fs::path before = exportDocument("before.json");
    const fs::path after = exportDocument("after.json");
    ASSERT_FALSE(before.empty() || after.empty()) << errors;
    EXPECT_EQ(materialOutline(before, before.parent_path()), materialOutline(after, after.parent_path()));
    EXPECT_LT(difference(picture(before), picture(after)), 0.02);

    ASSERT_EQ(headless("materials convert before.json --material Glass --save one.json"), 0) << errors;
    EXPECT_TRUE(out.ends_with("\n1 material converted\n")) << out;
    const std::string one = readFile(folder() / "one.json");
    EXPECT_NE(one.find("\"Old Materials\""), std::string::npos);
    EXPECT_NE(one.find("{\"type\": \"Texture\", \"material\": \"Bricks\"}"), std::string::npos);
}

/// The copy with the images looks as the object did.
TEST_F(MaterialsCommands, BakeShowsTheSamePicture) {
    writeDocument(
        "before.json",
        R"({"id": "a", "name": "Chart", "type": 1024337, "parameters": {"MAT_ALBEDO_SHADER": "checks",
                      "MAT_BLEND_ENABLED": true, "MAT_BLEND_SHADER": "ramp"}, "shaders": [
                      {"type": "Checkerboard", "id": "checks", "parameters": {"CHECKERBOARD_COLOR1": [0.8, 0.2, 0.1]}},
                      {"type": "Gradient", "id": "ramp"}]})",
        WALL);
    ASSERT_EQ(headless("materials bake before.json --object Wall --material Chart --to images/wall.jpg "
                       "--width 256 --height 128 --save after.json --hide-original"),
              0)
        << errors;
    std::string images;
    for (const char* const name : {"wall_albedo.jpg", "wall_alpha.jpg"}) {
        images += "\nImage: " + (folder() / "images" / name).string();
    }
    EXPECT_TRUE(out.ends_with(images + "\n")) << out;
    std::string fault;
    const auto albedo = engine::loadTexels((folder() / "images/wall_albedo.jpg").string(), fault);
    ASSERT_NE(albedo, nullptr) << fault;
    EXPECT_EQ(albedo->width, 256u);
    EXPECT_EQ(albedo->height, 128u);
    EXPECT_NE(readFile(folder() / "after.json").find("\"BITMAPSHADER_FILENAME\": \"images/wall_albedo.jpg\""),
              std::string::npos);
    const fs::path before = exportDocument("before.json");
    const fs::path after = exportDocument("after.json");
    ASSERT_FALSE(before.empty() || after.empty()) << errors;
    EXPECT_LT(difference(picture(before), picture(after)), 0.03);

    EXPECT_EQ(
        headless("materials bake before.json --object Wall --material Chart --to one.jpg --channels albedo "
                 "--save one.json"),
        0)
        << errors;
    EXPECT_FALSE(fs::exists(folder() / "one_alpha.jpg"));
    EXPECT_EQ(readFile(folder() / "one.json").find("\"render\": \"off\""), std::string::npos);
}

TEST_F(MaterialsCommands, ImportAddsTheMaterialsOfAFile) {
    fs::create_directory(folder() / "file");
    fs::copy_file(fs::path(QUENZA_SOURCE_DIR) / "examples/textures/bricks.png", folder() / "file/bricks.png");
    writeFile(
        folder() / "file/wall.qzm",
        "<scenedata><material><uid>1</uid><name>Old wall</name><diffuse><texture><path>bricks.png</path>"
        "<a>0</a><b>1</b><c>0</c><uv_set_index>0</uv_set_index><exponent>2.2</exponent></texture><albedo>"
        "<texture><texture_index>0</texture_index></texture></albedo></diffuse></material>"
        "<material><uid>2</uid><name>Lamp</name><diffuse><albedo><constant><blackbody><temperature>5000"
        "</temperature><gain>1</gain></blackbody></constant></albedo></diffuse></material></scenedata>");
    writeDocument("set.json", R"({"id": "a", "name": "Here already"})", WALL);
    ASSERT_EQ(headless("materials import file/wall.qzm --into set.json --save set.json"), 0) << errors;
    EXPECT_TRUE(out.ends_with("\n2 materials imported\n")) << out;
    EXPECT_NE(
        errors.find("Import warnings:\n- Albedo blackbody spectrum in Material \"Lamp\" not supported."),
        std::string::npos)
        << errors;
    const std::string saved = readFile(folder() / "set.json");
    for (const char* const part : {"\"Old wall\"", "\"Lamp\"", "\"Here already\"", "\"file/bricks.png\""}) {
        EXPECT_NE(saved.find(part), std::string::npos) << part;
    }
    ASSERT_EQ(headless("materials import file/wall.qzm --save alone.json"), 0) << errors;
    EXPECT_EQ(readFile(folder() / "alone.json").find("Here already"), std::string::npos);

    fs::remove(folder() / "file/bricks.png");
    ASSERT_EQ(headless("materials import file/wall.qzm --save alone.json"), 0) << errors;
    EXPECT_NE(errors.find("the texture " + (folder() / "file" / "bricks.png").string() + " was not found"),
              std::string::npos)
        << errors;
}

TEST_F(MaterialsCommands, SayWhatTheyCanNotDo) {
    writeDocument("set.json",
                  R"({"id": "a", "name": "Plain"}, {"id": "b", "name": "Chart", "type": 1024337,
                      "parameters": {"MAT_ALBEDO_SHADER": "checks"}, "shaders": [{"type": "Checkerboard", "id": "checks"}]},
                     {"id": "c", "name": "Even", "type": 1024337})",
                  WALL + R"(, {"type": "Cube", "name": "Box", "tags": [{"type": "Texture", "material": "b"}]},
                     {"name": "Panel", "points": [[0, 0, 0], [0, 9, 0], [9, 9, 0]], "polygons": [[0, 1, 2]],
                      "tags": [{"type": "Texture", "material": "b"}, {"type": "Texture", "material": "c"}]})");
    writeFile(folder() / "broken.qzm", "<scenedata><material>");
    writeFile(folder() / "broken.pqzm", "PK");
    const struct {
        const char* words;
        int status;
        const char* text;
    } cases[] = {
        {"materials", 2, "materials needs convert, bake, import or preview"},
        {"materials paint set.json", 2, "There is no command materials paint"},
        {"materials convert set.json", 2, "materials convert needs --save FILE.json"},
        {"materials convert set.json --material Plane --save o.json", 2,
         "The document has no material \"Plane\"; is Plain meant?"},
        {"materials convert set.json --material Chart --save o.json", 2,
         "The material \"Chart\" is one of the plug-in's already"},
        {"materials bake set.json --object Wall --material Plain --save o.json", 2,
         "materials bake needs --to"},
        {"materials bake set.json --object Wal --material Plain --to a.jpg --save o.json", 2,
         "The document has no object \"Wal\"; is Wall meant?"},
        {"materials bake set.json --object Wall --material Plain --to a.jpg --save o.json", 2,
         "The material \"Plain\" is one of the host's: \"materials convert\" makes it one that can be baked"},
        {"materials bake set.json --object Wall --material Chart --to a.jpg --save o.json", 2,
         "The object \"Wall\" has no texture tag with the material \"Chart\""},
        {"materials bake set.json --object Box --material Chart --to a.jpg --save o.json", 2,
         "The object \"Box\" is no polygon object, which alone can be baked"},
        {"materials bake set.json --object Panel --material Even --to a.jpg --save o.json", 1,
         "The material has nothing to bake: none of its channels is on and has a shader"},
        {"materials bake set.json --object Panel --material Chart --to a.jpg --channels bump --save o.json",
         1, "The material has no bump to bake: the channel is off, or has no shader"},
        {"materials bake set.json --object Panel --material Chart --to a.jpg --channels bum --save o.json", 2,
         "No channel \"bum\" can be baked; is bump meant?"},
        {"materials bake set.json --object Panel --material Chart --to a.jpg --width 0 --save o.json", 2,
         "--width takes a whole number from 1 to 65536, not \"0\""},
        {"materials import gone.qzm --save o.json", 1, "gone.qzm: there is no such file"},
        {"materials import set.json --save o.json", 1,
         "set.json: the materials can't be read: it is no .qzm, nor a .pqzm with one at its top"},
        {"materials import broken.pqzm --save o.json", 1,
         "broken.pqzm: the materials can't be read: it can't be unpacked"},
        {"materials import broken.qzm --save o.json", 1,
         "broken.qzm: the materials can't be read: failed to load XML doc"},
    };
    for (const auto& [words, status, text] : cases) {
        EXPECT_EQ(headless(words), status) << words;
        EXPECT_NE(errors.find(std::string("quenza-headless: ") + text), std::string::npos) << words << "\n"
                                                                                           << errors;
    }
    EXPECT_FALSE(fs::exists(folder() / "o.json"));
}

} // namespace
