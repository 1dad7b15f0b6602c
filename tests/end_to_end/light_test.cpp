// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"
#include "headless/model/document.h"
#include "headless/model/handles.h"
#include "headless/model/object.h"
#include "headless/model/tag.h"
#include "host/baselist.h"
#include "reading/scene_report.h"

#include <cstdlib>

namespace {

namespace fs = std::filesystem;

constexpr int32_t LIGHT_TAG = 1020892;
constexpr int32_t IES_PREVIEW = 1310;

class Lights : public Session {
protected:
    /// A renderer that writes the path of its scene to a file.
    void installRecorder() {
        const std::string file = sceneNameFile().string();
        install(makeRenderer("recorder", "for scene; do :; done\necho \"$scene\" > \"" + file +
                                             ".part\"\nmv \"" + file + ".part\" \"" + file + "\"\n"));
    }
#ifdef _WIN32
    fs::path sceneNameFile() const {
        return folder() / "recorder" / "done";
    }
    /// The renderer's line ends with the scene's path in quotes.
    static std::string sceneName(const std::string& told) {
        const size_t end = told.rfind('"');
        const size_t start = told.rfind('"', end - 1);
        return told.substr(start + 1, end - start - 1) + "\n";
    }
#else
    fs::path sceneNameFile() const {
        return folder() / "scene-name";
    }
    static std::string sceneName(const std::string& told) {
        return told;
    }
#endif
    fs::path previewScene() const {
        return folder() / "temp" / "quenza_ies_preview" / "ies_preview.qzs";
    }

    bool pressPreview() {
        headless::Tag* const tag = host().document()->objects().first()->tag(LIGHT_TAG);
        DescriptionCommand command{DescID(IES_PREVIEW)};
        return tag->message(MSG_DESCRIPTION_COMMAND, &command);
    }
    static std::string lightWithTag(const std::string& parameters) {
        return R"({"type": "Light", "tags": [{"type": 1020892, "parameters": {)" + parameters + "}}]}";
    }
};

TEST_F(Lights, ReachASceneThatReadsBackWithTheDefaultProfileBesideThePlugIn) {
    install(makeRenderer("none", ""));
    openDocument(R"({"type": "Light", "parameters": {"LIGHT_TYPE": 0}},
                    {"type": "Light", "parameters": {"LIGHT_TYPE": 1}},
                    {"type": "Light", "parameters": {"LIGHT_TYPE": 8, "LIGHT_AREADETAILS_SHAPE": 4}})");
    ASSERT_TRUE(render());
    const fs::path scene = userFolder() / "quickrender" / "quickrender.qzs";
    const Quenza::SceneSummary summary = Quenza::summariseScene(scene.string());
    EXPECT_EQ(summary.faults, std::vector<std::string>{});
    EXPECT_EQ(summary.nodes.at("sphere"), 1u);
    EXPECT_EQ(summary.nodes.at("model2"), 2u);
    const fs::path profile = fs::absolute(QUENZA_BIN_DIR "/presets/default.ies");
    EXPECT_NE(readFile(scene).find("<path>" + profile.string() + "</path>"), std::string::npos);
    EXPECT_EQ(readFile(profile), readFile(QUENZA_SOURCE_DIR "/presets/default.ies"));
}

TEST_F(Lights, PreviewButtonOpensARoomLitByTheChosenProfile) {
    installRecorder();
    writeFile(folder() / "lamp.ies", readFile(QUENZA_SOURCE_DIR "/presets/default.ies"));
    const struct {
        std::string parameters;
        std::string profile;
    } cases[] = {
        {"", fs::absolute(QUENZA_BIN_DIR "/presets/default.ies").string()},
        {R"("LIGHT_IES_FILE": {"file": "lamp.ies"})", (folder() / "lamp.ies").string()},
    };
    for (const auto& test : cases) {
        openDocument(lightWithTag(test.parameters));
        EXPECT_TRUE(pressPreview());
        ASSERT_TRUE(waitFor(sceneNameFile())) << "the renderer was never started";
        EXPECT_EQ(sceneName(readFile(sceneNameFile())), previewScene().string() + "\n");
        fs::remove(sceneNameFile());
        const Quenza::SceneSummary summary = Quenza::summariseScene(previewScene().string());
        EXPECT_EQ(summary.faults, std::vector<std::string>{});
        EXPECT_EQ(summary.nodes.at("model2"), 2u);
        EXPECT_NE(readFile(previewScene()).find("<path>" + test.profile + "</path>"), std::string::npos);
    }
}

TEST_F(Lights, PreviewOfAMissingProfileSaysSoAndStartsNothing) {
    installRecorder();
    openDocument(lightWithTag(R"("LIGHT_IES_FILE": {"file": "/nowhere/lamp.ies"})"));
    EXPECT_TRUE(pressPreview());
    EXPECT_TRUE(printed("There is no IES file \"/nowhere/lamp.ies\"."));
    EXPECT_FALSE(fs::exists(previewScene()));
}

TEST_F(Lights, BlurredObjectsHaveTheKeysThatTheirTracksGive) {
    install(makeRenderer("none", ""));
    // Without a camera tag the shutter is open for a twentieth of a second: with a doubled blur three frames.
    openDocument(
        R"({"type": "Cube", "tags": [{"type": "Motion Blur", "parameters": {"MOTIONBLUR_STRENGTH": 2}}],
                     "tracks": [{"channel": "position", "keys": [[0, [0, 0, 0]], [30, [3000, 0, 0]]]}]})");
    ASSERT_TRUE(render());
    EXPECT_TRUE(printed("SceneExportObjectMotionBlurSG()"));
    const fs::path scene = userFolder() / "quickrender" / "quickrender.qzs";
    EXPECT_EQ(Quenza::summariseScene(scene.string()).faults, std::vector<std::string>{});
    const std::string text = readFile(scene);
    std::string positions;
    const size_t model = text.find("<model2>");
    for (size_t at = text.find("<pos>", model); at != std::string::npos; at = text.find("<pos>", at + 1)) {
        positions += text.substr(at, text.find("</pos>", at) - at) + "\n";
    }
    EXPECT_EQ(positions, "<pos>0 0 0\n<pos>1 0 0\n<pos>2 0 0\n<pos>3 0 0\n");
}

} // namespace
