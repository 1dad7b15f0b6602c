// SPDX-License-Identifier: MIT
#include "headless/shaders/shader_ids.h"
#include "materials/material_fixture.h"
#include "materials/texture_factory.h"
#include "scene/wavelength_dependent_param.h"
#include "shared/plugin_state.h"
#include "shared/text.h"
#include "support/user_profile.h"

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
    pluginState().pluginPath = std::make_unique<Filename>(String(Quenza::nativeText(folder() + "/plugin")));
    EXPECT_EQ(pathOf("stage.png", context()), "");
    endExport();
    isMaterialPreview = true;
    EXPECT_EQ(pathOf("stage.png", context()), staged);
    EXPECT_EQ(pathOf("beside.png", context()), beside);
    const std::string both = addImageFile("plugin/res/materialpreview/beside.png");
    EXPECT_EQ(pathOf("beside.png", context()), both) << "the stage's own comes first";
    EXPECT_EQ(pathOf("missing.png", context()), "");
    pluginState().pluginPath.reset();
    EXPECT_EQ(pathOf("beside.png", context()), beside);
}

/// A library of presets with files that hold their own names.
class PresetExport : public MaterialTest {
protected:
    void addPreset(const std::string& name) const {
        const std::filesystem::path path = folder() + "/library/" + name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << name;
    }
    std::string contentOf(const std::string& path) const { return Quenza::fileBytes(path); }

private:
    const Quenza::Variable presets_{"QUENZA_HEADLESS_PRESETS", folder() + "/library"};
};

TEST_F(PresetExport, CopiesAPresetOnceUnderAFlatName) {
    addPreset("tex.lib4d/wood/oak.jpg");
    const std::string start = context().textureDirectory.GetUtf8() + Quenza::nativeText("/preset_tex.lib4d_");
    const std::string expected = start + "wood_oak.jpg";
    EXPECT_EQ(pathOf("preset://tex.lib4d/wood/oak.jpg", context()), expected);
    EXPECT_EQ(contentOf(expected), "tex.lib4d/wood/oak.jpg");
    // What is there already stays.
    std::ofstream(expected, std::ios::binary) << "changed";
    EXPECT_EQ(pathOf("preset://tex.lib4d/wood/oak.jpg", context()), expected);
    EXPECT_EQ(contentOf(expected), "changed");
    EXPECT_EQ(pathOf("preset://tex.lib4d/missing.jpg", context()), start + "missing.jpg");
}

/// Two renders at once: what the first deletes at its end isn't what the second looks at.
TEST_F(PresetExport, GivesEachExportTemporaryCopiesOfItsOwn) {
    addPreset("a.jpg");
    Quenza::Vector<Quenza::String> files;
    extraFiles = &files;
    const std::string first = pathOf("preset://a.jpg", context());
    EXPECT_EQ(pathOf("preset://a.jpg", context()), first);
    pathOf("preset://missing.jpg", context());
    endExport();
    const std::string second = pathOf("preset://a.jpg", context());
    EXPECT_NE(second, first);
    ASSERT_EQ(files.size(), 2u) << "without the one that is missing";
    EXPECT_EQ(files[0].toStdString(), first);
    EXPECT_EQ(files[1].toStdString(), second);
    for (const Quenza::String& file : files) {
        EXPECT_EQ(contentOf(file.toStdString()), "a.jpg");
        std::filesystem::remove(file.toStdString());
    }
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

} // namespace
