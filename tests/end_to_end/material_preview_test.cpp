// SPDX-License-Identifier: MIT
#include "end_to_end/programs.h"
#include "headless/documents/document_error.h"
#include "headless/images/image_files.h"
#include "headless/preview/material_preview.h"
#include "host/videopost.h"

#include <algorithm>

namespace {

namespace fs = std::filesystem;
using headless::Image;

constexpr int32_t PREVIEWED_MATERIAL = 1024337;

/// Previews by the stand-in renderer's library, on the plug-in's own scenes.
class MaterialPreviewCommand : public Programs {
protected:
    MaterialPreviewCommand() {
        writeDocument(
            "materials.json",
            R"({"id": "r", "name": "Red", "type": 1024337, "parameters": {"MAT_ALBEDO_COLOUR": [1, 0, 0]}},
                         {"id": "b", "name": "Blue/Red", "type": 1024337, "parameters": {"MAT_KIND": "MAT_KIND_BLEND",
                          "MAT_BLEND_MATERIAL_A": "r", "MAT_BLEND_MATERIAL_B": "t", "MAT_BLEND_VALUE": 1}},
                         {"id": "t", "name": "Blue", "type": 1024337, "parameters": {"MAT_ALBEDO_SHADER": "i"}, "shaders":
                          [{"type": "Bitmap", "id": "i", "parameters": {"BITMAPSHADER_FILENAME": "textures/blue.png"}}]},
                         {"id": "h", "name": "Half", "type": 1024337, "parameters": {"MAT_KIND": "MAT_KIND_BLEND"}},
                         {"id": "s", "name": "Standard"})",
            R"({"type": "Null"})");
        Image blue;
        blue.init(2, 2, 24);
        for (int32_t i = 0; i < 4; ++i) {
            blue.setPixel(i % 2, i / 2, Vector(0, 0, 1));
        }
        fs::create_directory(folder() / "textures");
        EXPECT_EQ(headless::writeImage(folder() / "textures" / "blue.png", blue, {}), IMAGERESULT_OK);
    }

    int preview(const std::string& words) {
        return headless("materials preview materials.json --quality low --size 24 " + words);
    }
    /// The image's colour in the middle, where the object is.
    Vector middleOf(const std::string& file) const {
        Image image;
        EXPECT_EQ(headless::readImage(folder() / file, image), IMAGERESULT_OK) << file;
        EXPECT_EQ(image.width(), 24);
        EXPECT_EQ(image.height(), 24);
        Vector sum;
        for (int32_t i = 0; i < 16; ++i) {
            sum += image.pixel(10 + i % 4, 10 + i / 4);
        }
        return sum * (1.0f / 16.0f);
    }
};

TEST_F(MaterialPreviewCommand, ShowsMaterialsOnTheScenes) {
    ASSERT_EQ(preview("--material Red --image shown/red.png"), 0) << errors;
    EXPECT_TRUE(out.ends_with("Image: " + (folder() / "shown" / "red.png").string() + "\n")) << out;
    const Vector red = middleOf("shown/red.png");
    EXPECT_GT(red.x, 3.0f * red.z);
    EXPECT_GT(red.x, 0.1f);
    EXPECT_LT(red.x, 0.95f);

    // A blend's parts come with it, and their textures are found where the document lies.
    ASSERT_EQ(preview("--material Blue/Red --material Blue --material Red --image all.png"), 0) << errors;
    for (const char* const file : {"all_Blue_Red.png", "all_Blue.png"}) {
        const Vector blue = middleOf(file);
        EXPECT_GT(blue.z, 3.0f * blue.x) << file;
    }
    EXPECT_GT(middleOf("all_Red.png").x, 3.0f * middleOf("all_Red.png").z);

    ASSERT_EQ(preview("--material Red --scene studio --image studio.png"), 0) << errors;
    EXPECT_NE(readFile(folder() / "studio.png"), readFile(folder() / "shown/red.png"));
}

TEST_F(MaterialPreviewCommand, TellsWhyThereIsNoPreview) {
    const struct {
        const char* words;
        int status;
        const char* error;
    } cases[] = {
        {"--material Half --image a.png", 1,
         R"(No preview of "Half": there is none: its quality is "none", or it is a blend that lacks a material)"},
        {"--material Standard --image a.png", 2,
         R"(The material "Standard" is one of the host's: "materials convert" makes it one with a preview)"},
        {"--material Red --scene cube --image a.png", 2, R"(There is no preview scene "cube")"},
        {"--material Red --image a.jpg", 2, "materials preview needs --image FILE.png"},
        {"--image a.png", 2, "materials preview needs --material NAME"},
        {"--material Reed --image a.png", 2, R"(The document has no material "Reed"; is Red meant?)"},
    };
    for (const auto& expected : cases) {
        EXPECT_EQ(preview(expected.words), expected.status) << expected.words;
        EXPECT_NE(errors.find(expected.error), std::string::npos) << errors;
    }
    EXPECT_FALSE(fs::exists(folder() / "a.png"));
}

/// The plug-in with preview scenes of the test.
class PreviewScenes : public Session {
protected:
    PreviewScenes() {
        const fs::path bin = QUENZA_BIN_DIR;
        Quenza::link(bin / Quenza::PLUGIN_NAME, folder() / Quenza::PLUGIN_NAME);
        fs::copy(bin / "res", folder() / "res", fs::copy_options::recursive);
        fs::remove_all(scenes());
        fs::create_directory(scenes());
    }
    fs::path scenes() const { return folder() / "res" / "materialpreview"; }
    void addScene(const std::string& name, const std::string& text) const {
        writeFile(scenes() / name, text);
    }
    void load() { startHost().loadPlugin(folder() / Quenza::PLUGIN_NAME); }
};

TEST_F(PreviewScenes, AreTheDocumentsOfTheFolder) {
    fs::copy(fs::path(QUENZA_BIN_DIR) / "res" / "materialpreview", scenes(), fs::copy_options::recursive);
    addScene("empty.json", "");
    addScene("image.jpg", "no image");
    addScene("newer.json", R"({"format": "quenza-headless-document", "version": 2})");
    fs::create_directory(scenes() / "folder");
    load();
    EXPECT_EQ(host().previewScenes().names(PREVIEWED_MATERIAL),
              (std::vector<std::string>{"sphere", "studio"}));
    std::vector<std::string> failed = newLines();
    std::erase_if(failed, [](const std::string& line) { return !line.starts_with("Failed loading"); });
    EXPECT_EQ(failed, (std::vector<std::string>{"Failed loading preview scene: empty.json",
                                                "Failed loading preview scene: folder",
                                                "Failed loading preview scene: image.jpg",
                                                "Failed loading preview scene: newer.json"}));
    EXPECT_TRUE(host().isStarted());
}

/// The scene is set up once, and previews leave nothing on it.
TEST_F(PreviewScenes, AreUsedAgain) {
    addScene("one.json", R"({"format": "quenza-headless-document", "version": 1, "objects": [
        {"type": "Sphere", "name": "Object", "tags": [{"type": "Texture"}]}, {"type": "Light", "name": "Light"}]})");
    load();
    writeFile(folder() / "document.json",
              R"({"format": "quenza-headless-document", "version": 1, "materials": [
        {"name": "a", "type": 1024337, "parameters": {"MAT_PREVIEW_QUALITY": "MAT_PREVIEW_NONE"}},
        {"name": "b", "type": 1024337, "parameters": {"MAT_PREVIEW_QUALITY": "MAT_PREVIEW_NONE"}}]})");
    openFile(folder() / "document.json");
    headless::PreviewScene& scene = *host().previewScenes().find(PREVIEWED_MATERIAL, "");
    const headless::Document& stage = *scene.document;
    for (headless::Material* material = host().document()->materials().first(); material;
         material = material->next) {
        Image image;
        ASSERT_TRUE(headless::makesPreviews(*material));
        EXPECT_EQ(headless::renderPreview(host(), *material, scene, {4, 4}, image), RENDERRESULT_NOMACHINE);
        const headless::VideoPost* const settings = stage.activeRenderData()->videoPosts().first();
        ASSERT_TRUE(settings);
        EXPECT_EQ(settings->next, nullptr);
        EXPECT_EQ(stage.materials().first(), nullptr);
        EXPECT_EQ(stage.objects().first()->next->tags().first()->next, nullptr) << "one tag on the lamp";
    }
}

} // namespace
