// SPDX-License-Identifier: MIT
#ifdef __linux__ // which tells the number of threads

// Renders of a tiny scene, by the renderer's library, that are started and ended in a row in one process, in
// each phase in turn, while the artist is busy at random. Made for the sanitizers, so not called Slow:
//
//   QUENZA_STRESS_RENDERS  how many
//   QUENZA_STRESS_SEED     of the first; each next one has the next number
#include "end_to_end/session.h"

#include "headless/app/plugin_numbers.h"
#include "headless/model/handles.h"
#include "headless/preview/material_preview.h"
#include "headless/render/picture_render.h"
#include "host/plugin_data.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <mutex>
#include <numeric>
#include <random>
#include <thread>

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using headless::PictureRender;

namespace {

constexpr auto STRESS_LIMIT = 120s;
constexpr const char* STRESS_SCENE = R"({"format": "quenza-headless-document", "version": 1,
  "materials": [
    {"id": "tiles", "name": "Tiles", "parameters": {"MATERIAL_COLOR_SHADER": "checks"},
     "shaders": [{"type": "Checkerboard", "id": "checks"}]},
    {"name": "Previewed", "type": 1024337, "parameters": {"MAT_PREVIEW_QUALITY": "MAT_PREVIEW_LOW"}}],
  "objects": [
    {"type": "Plane", "name": "Floor", "tags": [{"type": "Texture", "material": "tiles"}],
     "parameters": {"PRIM_PLANE_WIDTH": 1000, "PRIM_PLANE_HEIGHT": 1000}},
    {"type": "Sphere", "name": "Ball", "position": [0, 50, 0], "parameters": {"PRIM_SPHERE_RAD": 50}},
    {"type": "Light", "name": "Left", "position": [-200, 300, 0], "rotation": [0, -90, 0],
     "parameters": {"LIGHT_TYPE": 8, "LIGHT_AREADETAILS_SIZEX": 200, "LIGHT_AREADETAILS_SIZEY": 200},
     "tags": [{"type": 1020892, "parameters": {"LIGHT_LAYER": "LIGHT_LAYER_1"}}]},
    {"type": "Light", "name": "Right", "position": [200, 300, 0], "rotation": [0, -90, 0],
     "parameters": {"LIGHT_TYPE": 8, "LIGHT_AREADETAILS_SIZEX": 200, "LIGHT_AREADETAILS_SIZEY": 200},
     "tags": [{"type": 1020892, "parameters": {"LIGHT_LAYER": "LIGHT_LAYER_2"}}]},
    {"type": "Camera", "id": "camera", "name": "Camera", "position": [0, 200, -400], "rotation": [0, -20, 0]}],
  "camera": "camera",
  "renderData": [{"width": 24, "height": 16, "videoPosts": [{"type": 1020896, "parameters": {
    "RS_LAYER_NAME_1": "Left", "RS_LAYER_NAME_2": "Right", "RS_HALT_SPP": HALT}}]}]})";
constexpr const char* HALT = "16";
constexpr const char* NO_HALT = "-1";

/// Where a render is ended: at a status text that begins like this, after some of them.
struct End {
    const char* status;
    int latest;
    const char* halt;
};
constexpr End ENDS[] = {
    {"Exporting scene...", 1, NO_HALT},
    {"Building scene...", 1, NO_HALT},
    {"Rendering: ", 1, NO_HALT},
    {"Rendering: ", 5, NO_HALT},
    {"Tonemapping...", 3, NO_HALT},
    {"Paused: ", 3, NO_HALT},
    {"Final tonemapping...", 1, HALT},
    {"Closing render threads...", 1, HALT},
    {"the end that it has itself", 1, HALT},
};

enum class Way { STOP, DROP, CLOSE_DOCUMENT };
constexpr Way WAYS[] = {Way::STOP, Way::STOP, Way::DROP, Way::CLOSE_DOCUMENT};

uint32_t numberOfEnvironment(const char* name, uint32_t otherwise) {
    const char* const text = std::getenv(name);
    return text ? static_cast<uint32_t>(std::strtoul(text, nullptr, 10)) : otherwise;
}

std::ptrdiff_t countThreads() {
    return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
}

class PictureStress : public Session {
protected:
    PictureStress() {
        startHost(false, [this](const std::string& text) { watch(text); }).loadPlugin(Quenza::PLUGIN_PATH);
    }
    ~PictureStress() override { stop(); }

    void open(const char* halt) {
        writeFile(folder() / "document.json", replaceAll(STRESS_SCENE, "HALT}", std::string(halt) + "}"));
        openFile(folder() / "document.json");
    }
    std::unique_ptr<PictureRender> makePicture() {
        return std::make_unique<PictureRender>(host(), headless::PictureSettings(),
                                               [this] { host().loop().wake(); });
    }
    void await(const char* what, const std::function<bool()>& done) {
        // The kernel and other threads come to some ends without waking the loop.
        const int timer = host().loop().addTimer(1ms, [] {});
        EXPECT_TRUE(host().runUntil(done, STRESS_LIMIT)) << "waiting for " << what;
        host().loop().removeTimer(timer);
    }

    void renderAndEnd(uint32_t seed);
    /// A render that nobody disturbs, with its sums of red, green and blue.
    std::vector<double> renderUndisturbed();
    void expectRest();

private:
    /// On the thread that sets the text, with the status bar locked.
    void watch(const std::string& text) {
        {
            const std::lock_guard lock(shownMutex_);
            shown_.push_back(text);
        }
        if (!text.starts_with(end_.load()->status) || ++endsSeen_ != endAt_) {
            return;
        }
        if (way_ == Way::STOP) {
            stopped_.load()->stop();
        }
        isEndDue_ = true;
        host().loop().wake();
    }
    void act();
    void useDialog();
    bool isEnabled(int32_t command) {
        const auto& data = host().registrations().find(command)->command;
        return (data->GetState(headless::toHost(host().document())) & CMD_ENABLED) != 0;
    }
    void renderPreview();
    /// From 0 to below `end`.
    uint32_t any(uint32_t end) { return std::uniform_int_distribution<uint32_t>(0, end - 1)(random_); }

    static constexpr End NOWHERE{"not at all", 0, NO_HALT};

    std::mt19937 random_;
    std::atomic<const End*> end_{&NOWHERE};
    std::atomic<int> endsSeen_{0};
    std::atomic<int> endAt_{0};
    std::atomic<Way> way_{Way::STOP};
    std::atomic<PictureRender*> stopped_{nullptr};
    std::atomic<bool> isEndDue_{false};
    std::mutex shownMutex_;
    std::vector<std::string> shown_;
};

/// The commands run whether they are enabled or not: what they see may change in between.
void PictureStress::act() {
    constexpr int32_t COMMANDS[] = {headless::PAUSE_RENDERING, headless::RESUME_RENDERING,
                                    headless::UPDATE_IMAGE};
    const uint32_t choice = any(8);
    if (choice < std::size(COMMANDS)) {
        isEnabled(COMMANDS[choice]);
        host().registrations().find(COMMANDS[choice])->command->Execute(nullptr);
    } else if (choice == std::size(COMMANDS)) {
        host().tellOfChange();
    } else {
        useDialog();
    }
}

void PictureStress::useDialog() {
    GeDialog* dialog = host().dialogs().openDialogWith(headless::TONEMAP_METHOD);
    if (!dialog) {
        host().executeCommand(headless::TONEMAPPING_DIALOG);
        return;
    }
    const float level = static_cast<float>(any(5));
    const auto layer = static_cast<int32_t>(any(2));
    switch (any(6)) {
    case 0:
        host().dialogs().enter(dialog, headless::TONEMAP_METHOD, GeData(int32_t{headless::TONEMAP_LINEAR}));
        break;
    case 1:
        host().dialogs().enter(dialog, headless::TONEMAP_SCALE, GeData(level));
        break;
    case 2:
        host().dialogs().press(dialog, headless::LAYER_ENABLED + layer);
        break;
    case 3:
        host().dialogs().enterColour(dialog, headless::LAYER_COLOUR + layer, Vector(1.0f, 0.5f, 1.0f), level);
        break;
    case 4:
        host().dialogs().enter(dialog, headless::WHITE_POINT, GeData(int32_t{6025}));
        break;
    default:
        host().dialogs().requestClose(dialog);
    }
}

void PictureStress::renderPreview() {
    headless::PreviewScene* const scene = host().previewScenes().find(headless::QUENZA_MATERIAL, "");
    ASSERT_TRUE(scene);
    headless::Material* material = host().document()->materials().first();
    while (material->type() != headless::QUENZA_MATERIAL) {
        material = material->next;
    }
    headless::Image image;
    EXPECT_EQ(headless::renderPreview(host(), *material, *scene, {8, 8}, image), RENDERRESULT_OK);
    EXPECT_TRUE(
        std::any_of(image.bytes(), image.bytes() + 8 * 8 * 3, [](uint8_t byte) { return byte != 0; }));
}

void PictureStress::renderAndEnd(uint32_t seed) {
    random_.seed(seed);
    const End& end = ENDS[seed % std::size(ENDS)];
    const Way way = WAYS[any(std::size(WAYS))];
    const bool hasPreview = any(6) == 0;
    SCOPED_TRACE("seed " + std::to_string(seed) + ": ended at \"" + end.status + "\", way " +
                 std::to_string(static_cast<int>(way)) + (hasPreview ? ", with a preview" : ""));
    open(end.halt);
    std::unique_ptr<PictureRender> picture = makePicture();
    stopped_ = picture.get();
    endsSeen_ = 0;
    endAt_ = 1 + static_cast<int>(any(static_cast<uint32_t>(end.latest)));
    way_ = way;
    isEndDue_ = false;
    end_ = &end;
    picture->start();
    const int artist = host().loop().addTimer(std::chrono::milliseconds(1 + any(10)), [this] { act(); });
    if (hasPreview) {
        renderPreview();
    }
    await("the end of a render", [&] { return !picture->isRunning() || (isEndDue_ && way_ != Way::STOP); });
    if (way == Way::CLOSE_DOCUMENT) {
        host().open(nullptr);
        EXPECT_FALSE(picture->isRunning());
    } else if (way == Way::STOP) {
        EXPECT_NE(picture->result(), RENDERRESULT_FAILED);
        const bool mayHaveNone = end.status == ENDS[0].status || hasPreview;
        EXPECT_GE(picture->image().changes(), mayHaveNone ? 0u : 1u);
    }
    host().loop().removeTimer(artist);
    end_ = &NOWHERE;
    picture.reset();
}

std::vector<double> PictureStress::renderUndisturbed() {
    open(HALT);
    shown_.clear();
    const auto picture = makePicture();
    picture->start();
    await("the end of an undisturbed render", [&] { return !picture->isRunning(); });
    EXPECT_EQ(picture->result(), RENDERRESULT_OK);
    EXPECT_EQ(picture->image().changes(), 1u);
    for (const std::string& text : shown_) {
        EXPECT_FALSE(text.starts_with("Paused") || text.starts_with("Tonemapping")) << text;
    }
    headless::Image image;
    picture->image().copyTo(image);
    std::vector<double> sums(3);
    for (size_t at = 0; at < 24 * 16 * 3; ++at) {
        sums[at % 3] += image.bytes()[at];
    }
    return sums;
}

/// Nothing is left of the renders.
void PictureStress::expectRest() {
    EXPECT_FALSE(isEnabled(headless::PAUSE_RENDERING));
    EXPECT_FALSE(isEnabled(headless::RESUME_RENDERING));
    EXPECT_FALSE(isEnabled(headless::UPDATE_IMAGE));
    EXPECT_EQ(host().status().text(), "");
    EXPECT_EQ(listFiles(folder() / "temp"), std::vector<std::string>());
    EXPECT_EQ(host().errors().lines(), std::vector<std::string>());
    EXPECT_EQ(host().messages(), std::vector<std::string>());
}

} // namespace

TEST_F(PictureStress, RendersEndInAnyPhaseAndLeaveNothingBehind) {
    const uint32_t renders = numberOfEnvironment("QUENZA_STRESS_RENDERS", 12);
    const uint32_t seed = numberOfEnvironment("QUENZA_STRESS_SEED", 1);
    const std::vector<double> right = renderUndisturbed();
    EXPECT_GT(std::accumulate(right.begin(), right.end(), 0.0), 24 * 16 * 3 * 10) << "it shows something";
    expectRest();
    // The ray tracer's pool may still grow to a thread for each processor.
    const std::ptrdiff_t mostThreads =
        countThreads() + static_cast<std::ptrdiff_t>(std::thread::hardware_concurrency());
    for (uint32_t i = 0; i < renders && !HasFailure(); ++i) {
        SCOPED_TRACE("render " + std::to_string(i));
        renderAndEnd(seed + i);
        expectRest();
        const std::vector<double> next = renderUndisturbed();
        for (size_t component = 0; component < right.size(); ++component) {
            EXPECT_NEAR(next[component], right[component], 0.1 * right[component]);
        }
        expectRest();
        await("the end of threads", [&] { return countThreads() <= mostThreads; });
    }
}

#endif
