// SPDX-License-Identifier: MIT
#include "headless/documents_fixture.h"
#include "headless/images/image_files.h"
#include "headless/import/import_model.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/shaders/shader_ids.h"

#include <cmath>
#include <filesystem>

// What becomes of the materials of small models that the tests write themselves.

namespace headless {

namespace {

class ImportedMaterialsTest : public DocumentsTest {
protected:
    /// A glTF file whose materials and textures are given, each material on a triangle.
    void importGltf(size_t count, const std::string& materials, const std::string& textures = "",
                    const std::string& folder = "") {
        std::string triangles;
        for (size_t i = 0; i < count; ++i) {
            triangles += (i > 0 ? "," : "") + std::string(R"({"attributes": {"POSITION": 0}, "material": )") +
                         std::to_string(i) + "}";
        }
        document_ = importModel(
            write("a.gltf", R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}],
"extensionsUsed": ["KHR_materials_transmission", "KHR_texture_transform"],
"nodes": [{"mesh": 0}], "meshes": [{"primitives": [)" +
                                triangles + R"(]}],
"accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3"}],
"bufferViews": [{"buffer": 0, "byteLength": 36}], "buffers": [{"byteLength": 36, "uri":
"data:application/octet-stream;base64,AAAAAAAAAAAAAAAAAACAPwAAAAAAAAAAAAAAAAAAgD8AAAAA"}],
)" + textures + "\"materials\": [" +
                                materials + "]}"),
            warnings_, folder);
        forgetFolder();
    }
    void importObj(const std::string& materials) {
        write("a.mtl", materials);
        document_ = importModel(
            write("a.obj", "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl First\nf 1 2 3\n"), warnings_);
        forgetFolder();
    }
    /// Warnings begin with the file.
    void forgetFolder() {
        for (std::string& warning : warnings_) {
            if (warning.starts_with(path(""))) {
                warning.erase(0, path("").size());
            }
        }
    }
    const BaseContainer& data(const std::string& name) const { return find(name).data; }
    const Material& find(const std::string& name) const {
        for (const Material* material = document_->materials().first(); material; material = material->next) {
            if (material->name == name) {
                return *material;
            }
        }
        throw std::runtime_error("no material " + name);
    }
    /// Name of the image in a channel; "" without one.
    std::string image(const std::string& name, int32_t link) const {
        const Node* const shader = fromHost(data(name).GetLink(link, nullptr));
        return shader && shader->type() == Xbitmap
                   ? shader->data.GetFilename(BITMAPSHADER_FILENAME).GetFile().GetString().GetUtf8()
                   : "";
    }
    void writePicture(const std::string& name) const {
        Image picture;
        ASSERT_EQ(picture.init(2, 2, 24), IMAGERESULT_OK);
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        ASSERT_EQ(writeImage(path(name), picture, {}), IMAGERESULT_OK);
    }

    std::unique_ptr<Document> document_;
    std::vector<std::string> warnings_;
};

/// The index of refraction that the conversion makes of a reflection's brightness.
float reflectanceOf(float brightness) {
    const float index = 1.0f + 10.0f * brightness * brightness;
    return (index - 1.0f) * (index - 1.0f) / ((index + 1.0f) * (index + 1.0f));
}

TEST_F(ImportedMaterialsTest, TakePhysicalNumbersAsFarAsTheyGo) {
    importGltf(
        6,
        R"({"name": "Matt", "pbrMetallicRoughness": {"baseColorFactor": [0.5, 0.25, 1, 1], "metallicFactor": 0,
                   "roughnessFactor": 1}},
        {"name": "Plastic", "pbrMetallicRoughness": {"metallicFactor": 0, "roughnessFactor": 0.3}},
        {"name": "Gold", "pbrMetallicRoughness": {"baseColorFactor": [0.5, 0.5, 0.5, 1], "metallicFactor": 1,
         "roughnessFactor": 0}},
        {"name": "Glass", "pbrMetallicRoughness": {"metallicFactor": 0, "roughnessFactor": 0},
         "extensions": {"KHR_materials_transmission": {"transmissionFactor": 1}}},
        {"name": "Lamp", "emissiveFactor": [1, 0.5, 0], "pbrMetallicRoughness": {"metallicFactor": 0}},
        {"name": "Veil", "alphaMode": "BLEND", "pbrMetallicRoughness": {"baseColorFactor": [1, 1, 1, 0.25],
         "metallicFactor": 0}})");
    EXPECT_EQ(warnings_, std::vector<std::string>());
    // Linear in the file, for a display here.
    const Vector colour = data("Matt").GetVector(MATERIAL_COLOR_COLOR);
    EXPECT_NEAR(colour.x, std::pow(0.5f, 1.0f / 2.2f), 1e-5f);
    EXPECT_NEAR(colour.y, std::pow(0.25f, 1.0f / 2.2f), 1e-5f);
    for (const char* const matt : {"Matt", "Lamp", "Veil"}) {
        EXPECT_FALSE(data(matt).GetBool(MATERIAL_USE_REFLECTION)) << matt;
        EXPECT_FALSE(data(matt).GetBool(MATERIAL_USE_SPECULAR)) << matt;
    }
    EXPECT_TRUE(data("Plastic").GetBool(MATERIAL_USE_REFLECTION));
    EXPECT_NEAR(reflectanceOf(data("Plastic").GetReal(MATERIAL_REFLECTION_BRIGHTNESS)), 0.04f, 1e-3f);
    // The exponent of a cosine lobe that is as wide, 2 / 0.3^4 - 2, out of 5025 - 5000 blurriness.
    EXPECT_NEAR(5025.0f - 5000.0f * data("Plastic").GetReal(MATERIAL_REFLECTION_DISPERSION), 244.9f, 0.5f);
    EXPECT_NEAR(reflectanceOf(data("Gold").GetReal(MATERIAL_REFLECTION_BRIGHTNESS)), 0.5f, 1e-3f);
    EXPECT_EQ(data("Gold").GetReal(MATERIAL_REFLECTION_DISPERSION), 0.0f);
    EXPECT_TRUE(data("Glass").GetBool(MATERIAL_USE_TRANSPARENCY));
    EXPECT_EQ(data("Glass").GetReal(MATERIAL_TRANSPARENCY_REFRACTION), 1.5f);
    EXPECT_EQ(data("Glass").GetReal(MATERIAL_TRANSPARENCY_DISPERSION), 0.0f);
    EXPECT_TRUE(data("Lamp").GetBool(MATERIAL_USE_LUMINANCE));
    EXPECT_EQ(data("Lamp").GetVector(MATERIAL_LUMINANCE_COLOR).x, 1.0f);
    EXPECT_FALSE(data("Matt").GetBool(MATERIAL_USE_LUMINANCE));
    EXPECT_TRUE(data("Veil").GetBool(MATERIAL_USE_ALPHA));
    const Node* const mask = fromHost(data("Veil").GetLink(MATERIAL_ALPHA_SHADER, nullptr));
    ASSERT_NE(mask, nullptr);
    EXPECT_EQ(mask->data.GetVector(GRADIENT_COLOR1), Vector(0.25f, 0.25f, 0.25f));
}

TEST_F(ImportedMaterialsTest, TakeHighlightOpacityAndTexturesOfOlderOnes) {
    for (const char* const name : {"wood.png", "tex/Bump.PNG", "mask.png"}) {
        writePicture(name);
    }
    importObj(
        "newmtl First\nKd 0.5 0.25 0.125\nKs 0.5 0.5 0.5\nNs 40\nd 1\nmap_Kd wood.png\nmap_bump bump.png\n"
        "map_d mask.png\nmap_Ks gloss.png\n"
        "newmtl Second\nKd 1 1 1\nKs 0 0 0\nNs 40\nd 0.5\nKe 2 1 0\nmap_Kd gone.png\n");
    EXPECT_EQ(data("First").GetVector(MATERIAL_COLOR_COLOR), Vector(0.5f, 0.25f, 0.125f));
    EXPECT_TRUE(data("First").GetBool(MATERIAL_USE_SPECULAR));
    EXPECT_NEAR(data("First").GetReal(MATERIAL_SPECULAR_WIDTH), 0.4f, 1e-5f);
    EXPECT_NEAR(data("First").GetReal(MATERIAL_SPECULAR_HEIGHT), 0.5f, 1e-5f);
    EXPECT_EQ(image("First", MATERIAL_COLOR_SHADER), "wood.png");
    EXPECT_EQ(image("First", MATERIAL_BUMP_SHADER), "Bump.PNG");
    EXPECT_EQ(image("First", MATERIAL_ALPHA_SHADER), "mask.png");
    EXPECT_TRUE(data("First").GetBool(MATERIAL_USE_BUMP));
    EXPECT_FALSE(data("Second").GetBool(MATERIAL_USE_SPECULAR));
    EXPECT_TRUE(data("Second").GetBool(MATERIAL_USE_ALPHA));
    EXPECT_EQ(data("Second").GetVector(MATERIAL_LUMINANCE_COLOR), Vector(1.0f, 0.5f, 0.0f));
    EXPECT_EQ(data("Second").GetReal(MATERIAL_LUMINANCE_BRIGHTNESS), 2.0f);
    EXPECT_EQ(image("Second", MATERIAL_COLOR_SHADER), "");
    EXPECT_EQ(warnings_, (std::vector<std::string>{
                             "a.obj: material \"First\": left out are its textures of specular",
                             "a.obj: material \"Second\": its color texture \"gone.png\" was not found"}));
}

TEST_F(ImportedMaterialsTest, TellWhatATextureLoses) {
    writePicture("a b.png");
    importGltf(
        1,
        R"({"name": "Moved", "pbrMetallicRoughness": {"baseColorTexture": {"index": 0, "texCoord": 1, "extensions":
        {"KHR_texture_transform": {"offset": [0.5, 0]}}}, "metallicRoughnessTexture": {"index": 0}}})",
        R"("images": [{"uri": "a%20b.png"}], "textures": [{"source": 0}], )");
    EXPECT_EQ(image("Moved", MATERIAL_COLOR_SHADER), "a b.png");
    ASSERT_EQ(warnings_.size(), 3u);
    EXPECT_EQ(
        warnings_[0],
        "a.gltf: material \"Moved\": its color texture is shown without its offset, scale and rotation");
    EXPECT_EQ(warnings_[1],
              "a.gltf: material \"Moved\": its color texture is shown by the first texture coordinates, "
              "not by set 2");
    EXPECT_TRUE(
        warnings_[2].starts_with("a.gltf: material \"Moved\": left out are its textures of metalness"))
        << warnings_[2];
}

/// Bytes inside the file are written as they are, under a name that stays in the folder.
TEST_F(ImportedMaterialsTest, WriteWhatLiesInsideTheFile) {
    const std::string image =
        R"("images": [{"name": "../../up/wood:1", "uri": "data:image/png;base64,bm8gaW1hZ2U="}], "textures": [{"source": 0}], )";
    const std::string material =
        R"({"name": "Wood", "alphaMode": "BLEND", "pbrMetallicRoughness": {"baseColorTexture": {"index": 0}}})";
    importGltf(1, material, image, path("textures"));
    const Node* const shader = fromHost(data("Wood").GetLink(MATERIAL_COLOR_SHADER, nullptr));
    ASSERT_NE(shader, nullptr);
    const std::string file = shader->data.GetFilename(BITMAPSHADER_FILENAME).GetUtf8();
    EXPECT_TRUE(file.starts_with(path("textures") + "/")) << file;
    EXPECT_EQ(std::filesystem::file_size(file), 8u);
    EXPECT_EQ(std::filesystem::path(file).lexically_normal().parent_path(), path("textures"));

    importGltf(1, material, image);
    EXPECT_EQ(this->image("Wood", MATERIAL_COLOR_SHADER), "");
    ASSERT_FALSE(warnings_.empty());
    EXPECT_EQ(warnings_.front(),
              "a.gltf: material \"Wood\": its color texture would need a file of its own and is left out");
}

} // namespace

} // namespace headless
