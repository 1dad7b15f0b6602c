// SPDX-License-Identifier: MIT
#include "end_to_end/programs.h"

#include <set>
#include <tinyxml.h>

namespace {

namespace fs = std::filesystem;

/// What becomes of the files of a document's textures, wherever they come from.
class TextureFiles : public Programs {
protected:
    TextureFiles() { install(makeRenderer("none", "")); }

    static std::string quoted(const std::string& text) { return "\"" + text + "\""; }
    /// A standard material of that id whose colour is an image file.
    static std::string imageMaterial(const std::string& id, const std::string& name,
                                     const std::string& file) {
        return R"({"id": ")" + id + R"(", "name": ")" + name +
               R"(", "parameters": {"MATERIAL_COLOR_SHADER": ")" + id +
               R"(-image", "MATERIAL_USE_SPECULAR": false}, "shaders": [{"type": "Bitmap", "id": ")" + id +
               R"(-image", "parameters": {"BITMAPSHADER_FILENAME": ")" + file + R"("}}]})";
    }
    static std::string cube(const std::string& material) {
        return R"({"type": "Cube", "tags": [{"type": "Texture", "material": ")" + material + R"("}]})";
    }
    void copyImage(const std::string& image, const fs::path& target) const {
        fs::create_directories((folder() / target).parent_path());
        fs::copy_file(fs::path(QUENZA_SOURCE_DIR) / "examples/textures" / image, folder() / target);
    }

    struct SceneMaterial {
        std::string name;
        std::vector<std::string> textures;
    };
    static std::vector<SceneMaterial> materialsOf(const fs::path& scene) {
        std::vector<SceneMaterial> materials;
        TiXmlDocument document;
        EXPECT_TRUE(document.LoadFile(scene.string())) << scene;
        const TiXmlElement* const root = document.RootElement();
        for (const TiXmlElement* node = root ? root->FirstChildElement("material") : nullptr; node;
             node = node->NextSiblingElement("material")) {
            const char* const name = node->FirstChildElement("name")->GetText();
            SceneMaterial material{name ? name : "", {}};
            const TiXmlElement* const body = node->FirstChildElement("name")->NextSiblingElement();
            for (const TiXmlElement* texture = body->FirstChildElement("texture"); texture;
                 texture = texture->NextSiblingElement("texture")) {
                const char* const path = texture->FirstChildElement("path")->GetText();
                material.textures.push_back(path ? path : "");
            }
            materials.push_back(material);
        }
        return materials;
    }
    static std::vector<std::string> texturesOf(const fs::path& scene) {
        std::vector<std::string> textures;
        for (const SceneMaterial& material : materialsOf(scene)) {
            textures.insert(textures.end(), material.textures.begin(), material.textures.end());
        }
        return textures;
    }
};

TEST_F(TextureFiles, OfOneNameInTwoFoldersStayApart) {
    copyImage("bricks.png", "left/wall.png");
    copyImage("waves.png", "right/wall.png");
    writeDocument("set.json",
                  imageMaterial("a", "Left", "left/wall.png") + "," +
                      imageMaterial("b", "Right", "right/wall.png"),
                  cube("a") + "," + cube("b"));
    const fs::path scene = exportDocument("set.json");
    EXPECT_EQ(texturesOf(scene), (std::vector<std::string>{(folder() / "left/wall.png").string(),
                                                           (folder() / "right/wall.png").string()}));
    EXPECT_EQ(sceneTool("check '" + scene.string() + "'"), 0) << out;
}

TEST_F(TextureFiles, ThatAreMissingOrDamagedAreToldOnce) {
    writeFile(folder() / "damaged.png", "no image at all");
    writeDocument(
        "set.json",
        imageMaterial("a", "Wall", "gone.png") + "," + imageMaterial("unused", "Unused", "gone too.png") +
            R"(, {"id": "b", "name": "Layers", "type": 1024337, "parameters": {"MAT_ALBEDO_SHADER": "damaged",
                 "MAT_BUMP_ENABLED": true, "MAT_BUMP_SHADER": "fusion", "MAT_SIGMA_SHADER": "hidden"}, "shaders": [
                 {"type": "Bitmap", "id": "damaged", "parameters": {"BITMAPSHADER_FILENAME": "damaged.png"}},
                 {"type": "Bitmap", "id": "hidden", "parameters": {"BITMAPSHADER_FILENAME": "hidden.png"}},
                 {"type": "Fusion", "id": "fusion", "parameters": {"FUSION_BASE_CHANNEL": "below"}, "shaders": [
                   {"type": "Bitmap", "id": "below", "parameters": {"BITMAPSHADER_FILENAME": "gone.png"}}]}]},
               {"id": "c", "name": "Coat", "type": 1024337, "parameters": {"MAT_KIND": "MAT_KIND_COATING",
                 "MAT_COATING_SUBSTRATE": "b", "12016": {"link": "empty"}}, "shaders": [{"type": "Bitmap", "id": "empty"}]})",
        cube("a") + "," + cube("a") + "," + cube("c"));
    const fs::path scene = exportDocument("set.json");
    ASSERT_FALSE(scene.empty()) << errors;
    const std::string gone = "the texture " + (folder() / "gone.png").string() + " was not found\n";
    EXPECT_EQ(errors, "Material \"Wall\", Color: " + gone + "Material \"Layers\", Albedo: the texture " +
                          (folder() / "damaged.png").string() +
                          " can't be read: it is no image of a kind that this program knows\n"
                          "Material \"Layers\", Bump: " +
                          gone + "Material \"Coat\", Roughness: a texture names no file\n");
    EXPECT_EQ(sceneTool("check '" + scene.string() + "'"), 1);
    EXPECT_NE(out.find("material \"Wall\": albedo: a texture names no file\n"), std::string::npos) << out;
    EXPECT_NE(out.find("material \"Layers\": albedo: image '" + (folder() / "damaged.png").string() +
                       "' can't be read"),
              std::string::npos)
        << out;
}

/// Names that no file could have still stand in the scene as they are.
TEST_F(TextureFiles, HaveLegalNamesWhateverTheMaterialIsCalled) {
    const std::vector<std::string> names = {"a/b\\\\c",
                                            "..",
                                            "../../up",
                                            "say \\\"hi\\\" <&>",
                                            "tab\\tline\\nend",
                                            "con",
                                            "dot.",
                                            " ",
                                            std::string(3000, 'x'),
                                            "C:wall|?*",
                                            "\\u00e4\\u00f6\\u00fc"};
    std::string materials;
    std::string objects;
    for (size_t i = 0; i < names.size(); ++i) {
        const std::string id = std::to_string(i);
        materials +=
            (i > 0 ? "," : "") + std::string(R"({"id": ")") + id + R"(", "name": ")" + names[i] +
            R"(", "type": 1024337, "parameters": {"MAT_ALBEDO_SHADER": "n)" + id +
            R"(", "MAT_BAKE_WIDTH": 8, "MAT_BAKE_HEIGHT": 8}, "shaders": [{"type": "Noise", "id": "n)" + id +
            R"("}]})";
        objects += (i > 0 ? "," : "") + cube(id);
    }
    writeDocument("set.json", materials, objects);
    const fs::path scene = exportDocument("set.json");
    ASSERT_FALSE(scene.empty()) << errors;
    const fs::path textures = scene.parent_path() / "textures.scene";
    std::set<std::string> files;
    std::set<std::string> sceneNames;
    for (const SceneMaterial& material : materialsOf(scene)) {
        for (const std::string& path : material.textures) {
            const fs::path file = path;
            EXPECT_EQ(file.parent_path(), textures);
            EXPECT_TRUE(fs::is_regular_file(file)) << path;
            const std::string name = file.filename().string();
            EXPECT_TRUE(files.insert(name).second) << name;
            EXPECT_EQ(name.find_first_of("<>:\"/\\|?*\t\n"), std::string::npos) << name;
            EXPECT_LE(name.size(), 255u);
            sceneNames.insert(material.name);
        }
    }
    EXPECT_EQ(files.size(), names.size());
    EXPECT_TRUE(sceneNames.contains("a/b\\c"));
    EXPECT_TRUE(sceneNames.contains("say \"hi\" <&>"));
    EXPECT_TRUE(sceneNames.contains(std::string(3000, 'x')));
    EXPECT_EQ(sceneTool("check '" + scene.string() + "'"), 0) << out;
}

/// A folder that can't be made costs the images in it, and no part of the scene.
TEST_F(TextureFiles, ThatCanNotBeWrittenAreToldAndLeaveTheConstant) {
    fs::create_directories(folder() / "export-set");
    writeFile(folder() / "export-set/textures.scene", "a file in the folder's place");
    writeDocument("set.json",
                  R"({"id": "a", "name": "Wall", "parameters": {"MATERIAL_COLOR_SHADER": "n",
                      "MATERIAL_COLOR_COLOR": [0.5, 0.25, 0.125], "MATERIAL_USE_SPECULAR": false},
                      "shaders": [{"type": "Noise", "id": "n"}]})",
                  cube("a"));
    EXPECT_EQ(headless("render set.json --to export-set/scene.qzs"), 1);
    const fs::path scene = folder() / "export-set/scene.qzs";
    EXPECT_EQ(errors, "the image " +
                          (folder() / "export-set/textures.scene/Wall_1000000_albedo.jpg").string() +
                          " can't be written\n"
                          "quenza-headless: Not everything was done: 1 image could not be written\n");
    EXPECT_NE(materialOutline(scene, folder()).find("<albedo><constant><rgb><rgb>0.5 0.25 0.125</rgb>"),
              std::string::npos);
}

TEST_F(TextureFiles, FromInsideModelsAreWrittenBesideWhatIsMade) {
    const fs::path model = "/usr/share/assimp/models/glTF2/BoxTextured-glTF-Binary/BoxTextured.glb";
    const fs::path other = "/usr/share/assimp/models/FBX/embedded_ascii/box.FBX";
    if (!fs::exists(model) || !fs::exists(other)) {
        GTEST_SKIP() << "the package assimp-testmodels isn't installed";
    }
    ASSERT_EQ(headless("open " + model.string() + " --save out/box.json"), 0) << errors;
    EXPECT_EQ(errors, "");
    EXPECT_NE(readFile(folder() / "out/box.json").find("\"BoxTextured_textures/texture.png\""),
              std::string::npos);
    // Two models of one name in one document.
    fs::create_directories(folder() / "a");
    fs::create_directories(folder() / "b");
    fs::copy_file(model, folder() / "a/box.glb");
    fs::copy_file(other, folder() / "b/box.fbx");
    writeDocument("set.json", "",
                  R"({"model": "a/box.glb"}, {"model": "b/box.fbx"}, {"model": "a/box.glb"})");
    const fs::path scene = exportDocument("set.json");
    ASSERT_FALSE(scene.empty()) << errors;
    const std::string root = scene.parent_path().string();
    EXPECT_EQ(texturesOf(scene), (std::vector<std::string>{root + "/box_textures/texture.png",
                                                           root + "/box_textures_2/uv_test.png",
                                                           root + "/box_textures_3/texture.png"}));
    EXPECT_EQ(sceneTool("check '" + scene.string() + "'"), 0) << out;
    // An artist's own file of that name stays; what is there already is used again.
    writeFile(folder() / "out/BoxTextured_textures/texture.png", "the artist's");
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(headless("open " + model.string() + " --save out/box.json"), 0) << errors;
        EXPECT_EQ(listFiles(folder() / "out/BoxTextured_textures"),
                  (std::vector<std::string>{"texture.png", "texture_2.png"}));
    }
    EXPECT_EQ(readFile(folder() / "out/BoxTextured_textures/texture.png"), "the artist's");
}

struct TexturedModel {
    const char* file;
    std::vector<std::string> textures;
};

/// The images of real models reach the scene, each of them once, and can be read.
TEST_F(TextureFiles, OfRealModelsReachTheScene) {
    const fs::path models = "/usr/share/assimp/models";
    if (!fs::exists(models)) {
        GTEST_SKIP() << "the package assimp-testmodels isn't installed";
    }
    const TexturedModel cases[] = {
        {"Collada/duck.dae", {"duckCM.tga"}},
        {"Collada/earthCylindrical.DAE", {"earthCylindric.jpg"}},
        {"OBJ/spider.obj", {"SpiderTex.jpg", "drkwood2.jpg", "engineflare1.jpg", "wal67ar_small.jpg"}},
        {"glTF/BoxTextured-glTF/BoxTextured.gltf", {"CesiumLogoFlat.png"}},
        {"glTF/BoxTextured-glTF-Embedded/BoxTextured.gltf", {"Image0001.png"}},
        {"glTF2/BoxTextured-glTF-pbrSpecularGlossiness/BoxTextured.gltf", {"CesiumLogoFlat.png"}},
        {"BLEND/TexturedPlane_ImageUvPacked_248.blend", {"texture.png"}},
        {"3DS/cube_with_diffuse_texture.3DS", {"test.png"}},
    };
    for (const auto& [file, expected] : cases) {
        SCOPED_TRACE(file);
        const fs::path scene = exportDocument((models / file).string());
        ASSERT_FALSE(scene.empty()) << errors;
        std::set<std::string> names;
        for (const std::string& path : texturesOf(scene)) {
            names.insert(fs::path(path).filename().string());
        }
        EXPECT_EQ(std::vector<std::string>(names.begin(), names.end()), expected) << errors;
        EXPECT_EQ(sceneTool("check '" + scene.string() + "'"), 0) << out;
    }
}

} // namespace
