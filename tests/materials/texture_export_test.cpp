// SPDX-License-Identifier: MIT
#include "headless/shaders/shader_ids.h"
#include "materials/channels.h"
#include "materials/material_fixture.h"
#include "materials/texture_factory.h"
#include "scene/wavelength_dependent_param.h"
#include "shared/plugin_state.h"
#include "shared/text.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

using TextureExport = MaterialTest;

/// A shader of no material.
struct LooseBitmap {
    explicit LooseBitmap(const char* file) : shader(BaseShader::Alloc(Xbitmap)) {
        shader->GetDataInstance()->SetFilename(BITMAPSHADER_FILENAME, Filename(file));
    }
    ~LooseBitmap() { BaseShader::Free(shader); }
    LooseBitmap(const LooseBitmap&) = delete;
    LooseBitmap& operator=(const LooseBitmap&) = delete;
    BaseShader* shader;
};

std::string pathOf(const char* file, ExportContext& context) {
    const LooseBitmap bitmap(file);
    return makeTextureFromLink(bitmap.shader, TextureMapping(), context).path.toStdString();
}

TEST_F(TextureExport, LooksForFilesAsTheHostDoes) {
    const std::string beside = addImageFile("beside.png");
    const std::string inTex = addImageFile("tex/inside.png");
    EXPECT_EQ(pathOf("beside.png", context()), beside);
    EXPECT_EQ(pathOf("inside.png", context()), inTex);
    EXPECT_EQ(pathOf(inTex.c_str(), context()), inTex);
    EXPECT_EQ(pathOf("C:\\textures\\oak.jpg", context()), "C:\\textures\\oak.jpg");
    EXPECT_EQ(pathOf("missing.png", context()), "");
    EXPECT_EQ(pathOf("", context()), "");
    EXPECT_EQ(makeTextureFromLink(nullptr, TextureMapping(), context()).path, Quenza::String());
}

/// The stages of previews bring images of their own, which are found beside the plug-in alone.
TEST_F(TextureExport, LooksForImagesOfPreviewsBesideThePlugin) {
    const std::string beside = addImageFile("beside.png");
    const std::string staged = addImageFile("plugin/res/materialpreview/stage.png");
    pluginState().pluginPath = std::make_unique<Filename>(String(folder() + "/plugin"));
    EXPECT_EQ(pathOf("stage.png", context()), "");
    endExport();
    isMaterialPreview = true;
    EXPECT_EQ(pathOf("stage.png", context()), staged);
    EXPECT_EQ(pathOf("beside.png", context()), beside);
    EXPECT_EQ(pathOf("missing.png", context()), "");
    pluginState().pluginPath.reset();
    EXPECT_EQ(pathOf("beside.png", context()), beside);
}

TEST_F(TextureExport, KeepsTwoFilesOfOneName) {
    const std::string first = addImageFile("a/oak.png");
    const std::string second = addImageFile("b/oak.png");
    BaseMaterial* const material = addMaterial("Both");
    data(material).SetBool(MAT_EMISSION_ENABLED, true);
    addBitmap(material, MAT_ALBEDO_SHADER, first.c_str());
    addBitmap(material, MAT_EMISSION_SHADER, second.c_str());
    const std::string text = xml(exportMaterial(material));
    EXPECT_NE(text.find("<path>a/oak.png</path>"), std::string::npos) << text;
    EXPECT_NE(text.find("<path>b/oak.png</path>"), std::string::npos) << text;
}

TEST_F(TextureExport, TurnsSphericalImagesToTheirSeam) {
    TextureMapping mapping;
    mapping.spherical = true;
    const Quenza::Texture texture = makeTextureFromFile("sky.exr", mapping);
    Quenza::BufferOStream stream;
    texture.tex_coord_generation->writeToXML(stream, 0);
    EXPECT_EQ(stream.getBuffer().toStdString(),
              "<spherical>\n\t<rotation>\n\t\t<axis_rotation>\n\t\t\t<axis>0 0 1</axis>\n"
              "\t\t\t<angle>1.6</angle>\n\t\t</axis_rotation>\n\t</rotation>\n</spherical>\n");
}

/// A library of presets with files that hold their own names.
class PresetExport : public MaterialTest {
protected:
    PresetExport() { setenv("QUENZA_HEADLESS_PRESETS", (folder() + "/library").c_str(), 1); }
    ~PresetExport() override { unsetenv("QUENZA_HEADLESS_PRESETS"); }

    void addPreset(const std::string& name) const {
        const std::filesystem::path path = folder() + "/library/" + name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << name;
    }
    std::string contentOf(const std::string& path) const { return Quenza::fileBytes(path); }
};

TEST_F(PresetExport, CopiesAPresetOnceUnderAFlatName) {
    addPreset("tex.lib4d/wood/oak.jpg");
    const std::string expected = context().textureDirectory.GetUtf8() + "/preset_tex.lib4d_wood_oak.jpg";
    EXPECT_EQ(pathOf("preset://tex.lib4d/wood/oak.jpg", context()), expected);
    EXPECT_EQ(contentOf(expected), "tex.lib4d/wood/oak.jpg");
    // What is there already stays.
    std::ofstream(expected, std::ios::binary) << "changed";
    EXPECT_EQ(pathOf("preset://tex.lib4d/wood/oak.jpg", context()), expected);
    EXPECT_EQ(contentOf(expected), "changed");
    EXPECT_EQ(pathOf("preset://tex.lib4d/missing.jpg", context()),
              context().textureDirectory.GetUtf8() + "/preset_tex.lib4d_missing.jpg");
}

TEST_F(PresetExport, ListsTheCopyAmongTheFilesOfTheExport) {
    addPreset("a.jpg");
    Quenza::Vector<Quenza::String> files;
    extraFiles = &files;
    const std::string target = context().textureDirectory.GetUtf8() + "/preset_a.jpg";
    std::filesystem::remove(target);
    pathOf("preset://a.jpg", context());
    pathOf("preset://a.jpg", context());
    pathOf("preset://missing.jpg", context());
    ASSERT_EQ(files.size(), 1u);
    EXPECT_EQ(files[0].toStdString(), target);
    std::filesystem::remove(target);
}

TEST_F(PresetExport, KeepsPresetsApartWhoseFlatNamesAreOne) {
    addPreset("a/b_c.jpg");
    addPreset("a_b/c.jpg");
    const std::string first = pathOf("preset://a/b_c.jpg", context());
    const std::string second = pathOf("preset://a_b/c.jpg", context());
    EXPECT_EQ(contentOf(first), "a/b_c.jpg");
    EXPECT_EQ(contentOf(second), "a_b/c.jpg");
    EXPECT_TRUE(second.ends_with(".jpg")) << second;
    EXPECT_EQ(pathOf("preset://a/b_c.jpg", context()), first);
    EXPECT_EQ(pathOf("preset://a_b/c.jpg", context()), second);
}

TEST_F(PresetExport, StaysInTheTextureFolder) {
    const std::string textures = context().textureDirectory.GetUtf8();
    for (const std::string& name : {std::string("../../up.jpg"), std::string("..\\..\\up.jpg"),
                                    std::string("what?*.jpg"), std::string(3000, 'x') + ".jpg"}) {
        const std::filesystem::path path = pathOf(("preset://" + name).c_str(), context());
        EXPECT_EQ(path.parent_path().string(), textures);
        EXPECT_EQ(path.extension(), ".jpg");
        EXPECT_EQ(path.filename().string().find_first_of("?*\\/"), std::string::npos);
    }
}

/// Shaders that only the host knows.
class BakedExport : public MaterialTest {
protected:
    /// A checkerboard, baked small.
    void addHostShader(BaseMaterial* material, int32_t link) {
        data(material).SetLong(MAT_BAKE_WIDTH, 4);
        data(material).SetLong(MAT_BAKE_HEIGHT, 4);
        addShader(material, link, headless::Xcheckerboard);
    }
};

TEST_F(BakedExport, BakesOtherShadersOfEveryChannel) {
    BaseMaterial* const material = addMaterial("Baked", MAT_KIND_PHONG);
    for (const int32_t flag : {MAT_EXPONENT_ENABLED, MAT_BUMP_ENABLED, MAT_NORMAL_MAP_ENABLED,
                               MAT_DISPLACEMENT_ENABLED, MAT_EMISSION_ENABLED, MAT_CHANNEL_13000_ENABLED}) {
        data(material).SetBool(flag, true);
    }
    for (const ChannelId id : {ChannelId::ALBEDO, ChannelId::EXPONENT, ChannelId::BUMP, ChannelId::NORMAL_MAP,
                               ChannelId::DISPLACEMENT, ChannelId::EMISSION, ChannelId::FRESNEL_SCALE}) {
        addHostShader(material, channel(id).shader);
    }
    const std::string text = xml(exportMaterial(material));
    std::vector<std::string> endings;
    size_t greyscale = 0;
    for (const std::string& file : textureFiles()) {
        EXPECT_TRUE(file.starts_with("Baked_")) << file;
        EXPECT_NE(text.find("<path>textures.scene/" + file + "</path>"), std::string::npos) << text;
        endings.push_back(file.substr(file.rfind('_')));
        // A JPEG tells its number of components in the frame header.
        const std::string bytes = Quenza::fileBytes(context().textureDirectory.GetUtf8() + "/" + file);
        const size_t frame = bytes.find("\xFF\xC0");
        ASSERT_NE(frame, std::string::npos) << file;
        greyscale += bytes[frame + 9] == 1 ? 1 : 0;
    }
    std::sort(endings.begin(), endings.end());
    EXPECT_EQ(endings,
              (std::vector<std::string>{"_albedo.jpg", "_bump.jpg", "_displacement.jpg", "_emission.jpg",
                                        "_exponent.jpg", "_normal.jpg", "_sigma.jpg"}));
    EXPECT_EQ(greyscale, 4u);
    for (int32_t i = 0; i < 7; ++i) {
        EXPECT_NE(text.find("<texture_index>" + std::to_string(i) + "<"), std::string::npos) << i;
    }
}

TEST_F(BakedExport, GivesEveryBakeAFileOfItsOwnWithTheClockStandingStill) {
    for (int32_t i = 0; i < 2; ++i) {
        endExport();
        for (const char* const name : {"Same", "Same", "same", "S/ame", "S:ame"}) {
            BaseMaterial* const material = addMaterial(name);
            addHostShader(material, MAT_ALBEDO_SHADER);
            exportMaterial(material);
        }
    }
    EXPECT_EQ(textureFiles().size(), 10u);
}

TEST_F(BakedExport, KeepsTheNameButNotForTheFile) {
    for (const std::string& name : {std::string("../up"), std::string("a\"b"), std::string("CON"),
                                    std::string("\x01"), std::string(3000, 'x')}) {
        BaseMaterial* const material = addMaterial(name.c_str());
        addHostShader(material, MAT_ALBEDO_SHADER);
        const auto uid = exportMaterial(material);
        EXPECT_EQ(scene().getChildByUID(uid)->getName().toStdString(), name);
    }
    EXPECT_EQ(textureFiles().size(), 5u);
    EXPECT_FALSE(std::filesystem::exists(folder() + "/up"));
}

TEST_F(BakedExport, NamesFilesOfAMixAfterItsParts) {
    BaseMaterial* const material = addMaterial("Mix");
    data(material).SetBool(MAT_BLEND_ENABLED, true);
    addHostShader(material, MAT_ALBEDO_SHADER);
    addHostShader(material, MAT_BLEND_SHADER);
    exportMaterial(material);
    const std::vector<std::string> files = textureFiles();
    ASSERT_EQ(files.size(), 2u);
    EXPECT_TRUE(files[0].starts_with("Mix_") && files[0].ends_with("_alpha.jpg")) << files[0];
    EXPECT_TRUE(files[1].starts_with("Mix_blendA_") && files[1].ends_with("_albedo.jpg")) << files[1];
}

TEST_F(BakedExport, FallsBackToTheConstantWhenTheFileCantBeWritten) {
    const std::string textures = context().textureDirectory.GetUtf8();
    std::filesystem::remove(textures);
    std::ofstream(textures) << "in the way";
    BaseMaterial* const material = addMaterial("Unwritten");
    data(material).SetBool(MAT_BUMP_ENABLED, true);
    addHostShader(material, MAT_ALBEDO_SHADER);
    addHostShader(material, MAT_BUMP_SHADER);
    const std::string text = xml(exportMaterial(material));
    EXPECT_NE(text.find("<albedo>\n\t\t\t<constant>"), std::string::npos) << text;
    EXPECT_EQ(text.find("<bump>"), std::string::npos) << text;
    EXPECT_EQ(text.find("<path>"), std::string::npos) << text;
}

} // namespace
