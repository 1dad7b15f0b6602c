// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"

#include "headless/model/handles.h"
#include "host/basedraw.h"
#include "host/document.h"
#include "host/general.h"
#include "host/ids.h"
#include "host/object.h"
#include "host/tag.h"
#include "res/description/TCameraTag.h"
#include "shared/plugin_ids.h"
#include "support/capturing_library.h"

#include <algorithm>

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Lines = std::vector<std::string>;

constexpr int32_t REALTIME_COMMAND = 1033599;
constexpr int32_t AREA = 6037;
constexpr int32_t BUTTON = 6038;

/// The plug-in with the preview registered, on the capturing library and a clock that the test moves.
class RealtimePreviewTest : public Session {
protected:
    RealtimePreviewTest() {
        const fs::path bin = QUENZA_BIN_DIR;
        Quenza::link(bin / Quenza::REALTIME_PLUGIN_NAME, folder() / Quenza::REALTIME_PLUGIN_NAME);
        Quenza::link(bin / "res", folder() / "res");
        fs::create_directory(folder() / "quenza_x64");
        install(folder() / "nowhere");
    }
    ~RealtimePreviewTest() override { stop(); }

    void addLibrary() {
        const fs::path file = folder() / "quenza_x64" / "quenza_sdk.dll";
        Quenza::link(capture::CapturingLibrary::folder() / "quenza_sdk.dll", file);
        library_ = std::make_unique<capture::CapturingLibrary>(file);
    }
    capture::Control& control() const { return **library_; }
    /// Opens a document with a cube and the preview on it.
    void open() {
        startHost(true).loadPlugin(folder() / Quenza::REALTIME_PLUGIN_NAME);
        openDocument(R"({"type": "cube", "name": "Cube"})");
        openPreview();
        newLines();
    }
    void openPreview() {
        ASSERT_TRUE(host().executeCommand(REALTIME_COMMAND));
        dialog_ = host().dialogs().openDialogWith(BUTTON);
        ASSERT_TRUE(dialog_);
    }
    void press() { ASSERT_TRUE(host().dialogs().press(dialog_, BUTTON)); }
    /// Goes on to the moment at which the image of the run that is on is drawn.
    void advanceToImage() {
        const auto limit = std::chrono::steady_clock::now() + 60s;
        const auto drawn = [this] {
            const Lines lines = newLines();
            return std::find(lines.begin(), lines.end(), "drawing image") != lines.end();
        };
        while (!drawn()) {
            ASSERT_LT(std::chrono::steady_clock::now(), limit) << "no image comes";
            host().advance(100ms);
        }
    }
    const headless::Image& image() { return host().dialogs().areas().find(dialog_, AREA)->image; }
    std::vector<int> pixel(int32_t x, int32_t y) {
        const uint8_t* const bytes = image().bytes() + size_t(y * image().width() + x) * 3;
        return {bytes, bytes + 3};
    }
    size_t count(const char* name) const { return control().count(name); }
    size_t runs() const { return count("ToneMapperDLLAPI.startTonemapping"); }
    size_t updates() const { return count("QuenzaInterface.updateScene"); }

    BaseDocument* document() { return headless::toHost(host().document()); }
    BaseObject* camera() { return document()->GetActiveBaseDraw()->GetSceneCamera(document()); }
    /// The artist moves something. Gives what the plug-in says to it.
    Lines move(BaseObject* object) {
        Matrix matrix = object->GetMl();
        matrix.off.y += 10;
        object->SetMl(matrix);
        EventAdd();
        host().loop().runPosted();
        return newLines();
    }

    std::unique_ptr<capture::CapturingLibrary> library_;
    GeDialog* dialog_ = nullptr;
};

TEST_F(RealtimePreviewTest, ShowsAnImageAtTheEarliestASecondAfterTheLast) {
    addLibrary();
    control().setLayers([](uint32_t, uint32_t x, uint32_t y) {
        return std::array<float, 3>{x == 0 ? 1.0f : 0.0f, y == 0 ? 1.0f : 0.0f, 0.2f};
    });
    open();
    press();
    EXPECT_EQ(control().arguments(), Lines{"Dummy_scene_path"});
    ASSERT_EQ(control().setUps().size(), 1u);
    EXPECT_EQ(control().setUps()[0].gamma, 2.2f);
    EXPECT_EQ(control().setUps()[0].width, uint32_t(image().width()));
    EXPECT_EQ(control().setUps()[0].height, uint32_t(image().height()));
    for (size_t round = 0; round < 2; ++round) {
        host().advance(1000ms);
        EXPECT_EQ(runs(), round);
        host().advance(100ms);
        EXPECT_EQ(runs(), round + 1);
        advanceToImage();
    }
    EXPECT_EQ(pixel(0, 0), (std::vector<int>{255, 255, 51}));
    EXPECT_EQ(pixel(image().width() - 1, 0), (std::vector<int>{0, 255, 51}));
    EXPECT_EQ(pixel(0, image().height() - 1), (std::vector<int>{255, 0, 51}));

    // A run that takes its time is waited for, and no other is started meanwhile.
    control().holdToneMapping(true);
    host().advance(5000ms);
    EXPECT_EQ(runs(), 3u);
    EXPECT_EQ(newLines(), Lines());
    control().holdToneMapping(false);
    advanceToImage();
    EXPECT_EQ(control().violations(), Lines());
}

TEST_F(RealtimePreviewTest, FollowsTheCameraAndNothingElse) {
    addLibrary();
    open();
    BaseContainer& tag = *camera()->MakeTag(PLUGINID_CAMERA_TAG)->GetDataInstance();
    EXPECT_EQ(move(camera()), Lines()) << "without a render";
    press();
    newLines();
    EXPECT_EQ(move(document()->GetFirstObject()), Lines{"Scanning scene"});
    EXPECT_EQ(updates(), 0u);
    // The second line is the width of the film, which each export of a camera tells.
    tag.SetLong(CAM_TONEMAP_METHOD, CAM_TONEMAP_LINEAR);
    tag.SetReal(CAM_TONEMAP_SCALE, 2.5f);
    EXPECT_EQ(move(camera()), (Lines{"Scanning scene", "0.036000"}));
    EXPECT_EQ(updates(), 1u);
    EXPECT_EQ(move(document()->GetFirstObject()), Lines{"Scanning scene"});
    EXPECT_EQ(move(camera()).size(), 2u);
    EXPECT_EQ(updates(), 2u);
    host().advance(1100ms);
    EXPECT_EQ(control().takenStates().back().method, 1000u);
    EXPECT_EQ(control().takenStates().back().scale, 2.5);

    press();
    EXPECT_EQ(move(camera()), Lines()) << "after the end";
    EXPECT_EQ(control().violations(), Lines());
}

/// Whatever the camera was before: with motion blur its turn is in the keys, without it in the axes.
TEST_F(RealtimePreviewTest, ShowsAChangedCameraAsANewRenderWould) {
    addLibrary();
    open();
    BaseContainer& tag = *camera()->MakeTag(PLUGINID_CAMERA_TAG)->GetDataInstance();
    tag.SetFilename(CAM_OBSTACLE_MAP_FILE, Filename("dust.png"));
    camera()->SetMl(Matrix({0, 100, -500}, {0, 0, -1}, {0, 1, 0}, {1, 0, 0}));
    const auto shownCamera = [this] {
        host().advance(1100ms);
        const std::string shown = control().takenStates().back().camera;
        advanceToImage();
        return shown;
    };
    for (const bool isBlurred : {false, true}) {
        const auto blur = [this](bool on) {
            BaseTag* motionBlur = camera()->GetTag(Tmotionblur);
            if (on) {
                camera()->MakeTag(Tmotionblur);
            } else if (motionBlur) {
                motionBlur->Remove();
                BaseTag::Free(motionBlur);
            }
        };
        blur(!isBlurred);
        tag.SetBool(CAM_OBSTACLE_MAP, !isBlurred);
        press();
        const std::string before = shownCamera();
        blur(isBlurred);
        tag.SetBool(CAM_OBSTACLE_MAP, isBlurred);
        move(camera());
        const std::string changed = shownCamera();
        EXPECT_NE(changed, before);
        press();
        press();
        EXPECT_EQ(changed, shownCamera()) << isBlurred;
        press();
    }
    EXPECT_EQ(control().violations(), Lines());
}

TEST_F(RealtimePreviewTest, GoesOnBehindAClosedWindowAndEndsWithThePlugin) {
    addLibrary();
    open();
    press();
    ASSERT_TRUE(host().dialogs().requestClose(dialog_));
    host().advance(3000ms);
    EXPECT_EQ(count("QuenzaInterface.stop"), 0u);
    ASSERT_TRUE(host().restoreLayout(REALTIME_COMMAND, 300, 200));
    advanceToImage();
    EXPECT_EQ(pixel(0, 0), (std::vector<int>{128, 0, 0}));
    stop();
    EXPECT_EQ(count("QuenzaInterface.stop"), 1u);
    EXPECT_EQ(control().liveThreads(), 0);
    EXPECT_EQ(control().liveObjects(), 0);
    EXPECT_EQ(control().violations(), Lines());
}

TEST_F(RealtimePreviewTest, TellsWhyItCannotStart) {
    struct Case {
        const char* call;
        Lines lines;
    };
    addLibrary();
    open();
    for (const Case& failing :
         {Case{"QuenzaInterface.initialiseWithScene", {"Renderer failed to initialise(), error code: 7"}},
          Case{"QuenzaInterface.initialise", {"Failed to initialise 'QuenzaInterface'"}},
          Case{"ToneMapperDLLAPI.setUp", {"no space"}}}) {
        control().reset();
        control().fail(failing.call, 7, "no space");
        press();
        Lines lines = newLines();
        lines.erase(lines.begin()); // The width of the film.
        EXPECT_EQ(lines, failing.lines);
        EXPECT_EQ(count("QuenzaInterface.startRendering"), 0u);
        host().advance(2000ms);
        EXPECT_EQ(runs(), 0u);
        if (count("QuenzaInterface.initialiseWithScene") != 0) {
            press();
        }
        EXPECT_EQ(control().liveObjects(), 0) << failing.call;
    }
    control().reset();
    press();
    EXPECT_EQ(count("QuenzaInterface.startRendering"), 1u);
}

TEST_F(RealtimePreviewTest, DoesNothingWithoutTheLibrary) {
    open();
    press();
    host().advance(2000ms);
    EXPECT_EQ(newLines(), Lines());
}

} // namespace
