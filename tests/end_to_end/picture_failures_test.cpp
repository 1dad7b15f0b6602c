// SPDX-License-Identifier: MIT
#include "end_to_end/picture_fixture.h"

#include "headless/app/picture_watch.h"
#include "headless/model/handles.h"
#include "headless/model/render_data.h"
#include "host/plugin_data.h"
#include "shared/plugin_ids.h"

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <functional>
#include <thread>

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#endif

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class PictureFailuresTest : public PictureFixture {
protected:
    /// Nothing of the render is left.
    void expectClean() {
        EXPECT_EQ(tempFiles(), Lines());
        EXPECT_EQ(lastStatus(), "");
        EXPECT_FALSE(isEnabled(PLUGINID_PAUSE_COMMAND));
        EXPECT_FALSE(isEnabled(PLUGINID_UPDATE_IMAGE_COMMAND));
        EXPECT_EQ(library()->liveObjects(), 0);
        EXPECT_EQ(library()->liveThreads(), 0);
        EXPECT_EQ(library()->violations(), Lines());
    }
    headless::VideoPost* videoPost() { return headless::renderingVideoPost(*host().document(), 0); }
};

TEST_F(PictureFailuresTest, AreToldAndLeaveNothingBehind) {
    using Order = std::function<void(capture::Control&)>;
    const struct {
        const char* name;
        Order order;
        Lines printed;
        Lines messages;
        uint64_t images;
    } cases[] = {
        {"no renderer",
         [](auto& library) { library.fail("quenzaCreateInstance:QuenzaInterface", 1); },
         {"Failed to create Instance of 'QuenzaInterface'"},
         {},
         0},
        {"renderer not initialised",
         [](auto& library) { library.fail("QuenzaInterface.initialise", 1); },
         {"Failed to initialise 'QuenzaInterface'"},
         {},
         0},
        {"tone mapper not set up",
         [](auto& library) { library.fail("ToneMapperDLLAPI.setUp", 1, "no memory"); },
         {"Error while creating tonemapper: no memory"},
         {},
         0},
        {"tone mapper refuses the nodes",
         [](auto& library) { library.fail("ToneMapperDLLAPI.update", 1, "no response"); },
         {"Error while creating tonemapper: no response"},
         {},
         0},
        {"scene refused",
         [](auto& library) { library.fail("QuenzaInterface.initialiseWithScene", 3, "The mesh is torn."); },
         {},
         {"Error build scene failed.", "ERROR: The mesh is torn."},
         0},
        {"error while rendering",
         [](auto& library) {
             library.logOn("QuenzaInterface.startRendering", 0, "By the way");
             library.logOn("QuenzaInterface.startRendering", 1, "A shader fails.");
         },
         {},
         {"ERROR: A shader fails."},
         1},
        {"thread dies", [](auto& library) { library.dieInThread("bad luck"); }, {}, {"ERROR: bad luck"}, 1},
        {"throws what is no exception",
         [](auto& library) { library.followProgress([]() -> capture::Progress { throw 7; }); },
         {"The renderer has failed."},
         {},
         0},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        stop();
        startPlugin();
        library()->reset();
        row.order(*library());
        const auto picture = begin();
        awaitEnd(*picture);
        EXPECT_EQ(picture->result, RENDERRESULT_FAILED);
        EXPECT_EQ(picture->image.changes(), row.images);
        Lines lines = newLines();
        // The width of the film, which each export tells.
        std::erase(lines, "0.036000");
        EXPECT_EQ(lines, row.printed);
        EXPECT_EQ(host().messages(), row.messages);
        expectClean();
    }
}

/// The files of the export go with the render, and not before.
TEST_F(PictureFailuresTest, TemporaryFilesLastAsLongAsTheRender) {
    startPlugin();
    for (int i = 0; i < 3; ++i) {
        const auto picture = begin();
        EXPECT_EQ(tempFiles().size(), 1u);
        host().advance(std::chrono::milliseconds(70 * i));
        EXPECT_EQ(tempFiles().size(), 1u);
        end(*picture);
        expectClean();
    }
    // A host that gives the render up between two phases.
    auto* const data = static_cast<VideoPostData*>(videoPost()->pluginData());
    headless::RenderImage image(4, 4);
    headless::RenderCall call{&image, {}};
    VideoPostStruct vps;
    vps.doc = headless::toHost(host().document());
    vps.render = headless::toHost(&call);
    vps.vp = VIDEOPOSTCALL_TILE;
    vps.open = true;
    EXPECT_EQ(data->Execute(nullptr, nullptr, &vps), RENDERRESULT_OK);
    EXPECT_EQ(tempFiles().size(), 1u);
    host().open(nullptr);
    EXPECT_EQ(tempFiles(), Lines());
}

/// A tone mapping run that fails costs its image and nothing else.
TEST_F(PictureFailuresTest, OfToneMappingCostOneImage) {
    startPlugin();
    auto picture = begin();
    library()->failToneMapping("No response function.");
    round(3.5, 1.0);
    while (!printed("No response function.")) {
        host().advance(50ms);
    }
    EXPECT_EQ(picture->image.changes(), 0u);
    library()->failToneMapping("");
    round(8.0, 1.0);
    awaitImage(*picture, 1);

    end(*picture);
    expectClean();
}

/// A run that hangs doesn't hold up the end of a render whose library is in trouble, whenever it tells of it;
/// one that is sound still gives its image.
TEST_F(PictureFailuresTest, EndTheWaitForARun) {
    startPlugin();
    const struct {
        const char* name;
        bool isStoppedBefore, isSound;
        uint64_t images;
    } cases[] = {{"told by the loop", false, false, 0},
                 {"told after it", true, false, 0},
                 {"told by the loop, sound run", false, true, 2},
                 {"told after it, sound run", true, true, 2}};
    Lines messages;
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        library()->reset();
        const auto picture = begin();
        library()->holdToneMapping(true);
        ASSERT_TRUE(host().executeCommand(PLUGINID_UPDATE_IMAGE_COMMAND));
        round(1.0, 1.0);
        if (row.isStoppedBefore) {
            picture->End(false);
            host().advance(5s);
        }
        EXPECT_TRUE(picture->IsRunning());
        library()->log(1, row.name);
        messages.push_back(std::string("ERROR: ") + row.name);
        host().advance(9s);
        EXPECT_TRUE(picture->IsRunning());
        if (row.isSound) {
            library()->holdToneMapping(false);
            awaitEnd(*picture);
        } else {
            host().advance(2s);
            EXPECT_FALSE(picture->IsRunning());
        }
        EXPECT_EQ(picture->result, RENDERRESULT_FAILED);
        EXPECT_EQ(picture->image.changes(), row.images);
        EXPECT_EQ(host().messages(), messages);
        expectClean();
    }
}

/// A library that never lets go of the scene costs the last change, not the image.
TEST_F(PictureFailuresTest, EndTheWaitForTheScene) {
    startPlugin();
    enum class Error { none, before, meanwhile };
    const struct {
        Error error;
        std::chrono::seconds atLeast, atMost;
        int32_t result;
    } cases[] = {{Error::none, 9s, 2s, RENDERRESULT_USERBREAK},
                 {Error::before, 0s, 2s, RENDERRESULT_FAILED},
                 {Error::meanwhile, 5s, 1s, RENDERRESULT_FAILED}};
    for (const auto& row : cases) {
        SCOPED_TRACE(int(row.error));
        library()->reset();
        const auto picture = begin();
        library()->ignoreStop(true);
        library()->holdScene(true);
        makeLinear(0.5f);
        if (row.error == Error::before) {
            library()->log(1, "A thread has died.");
        } else {
            picture->End(false);
        }
        host().advance(row.atLeast);
        EXPECT_TRUE(picture->IsRunning());
        EXPECT_EQ(lastStatus().starts_with("Final tonemapping..."), row.atLeast > 0s);
        if (row.error == Error::meanwhile) {
            library()->log(1, "A thread has died.");
        }
        host().advance(row.atMost);
        Lines lines = newLines();
        std::erase(lines, "0.036000");
        EXPECT_EQ(lines,
                  Lines{"The renderer keeps the scene: the last change of the tone mapping isn't in the "
                        "image."});
        awaitEnd(*picture);
        EXPECT_EQ(picture->result, row.result);
        EXPECT_EQ(picture->pixel(0, 0), (std::vector<int>{128, 0, 0}));
        EXPECT_EQ(picture->image.changes(), 1u);
        expectClean();
    }
}

/// The page of a watched render hears why an action had no effect, also one that a dialog would swallow.
TEST_F(PictureFailuresTest, OfActionsAreToldToThePage) {
    startPlugin();
    headless::PictureSession session(host(), {std::nullopt, true});
    headless::PictureWatch watch(host(), session, 0);
    session.start();
    host().advance(0ms);
    const auto answerTo = [&](const char* action) {
        const headless::MainLoop::Serving serving(host().loop());
        std::string answer;
        std::atomic<bool> isThere{false};
        std::thread page([&] {
            answer = watch.act(action);
            isThere = true;
            host().loop().wake();
        });
        EXPECT_TRUE(
            host().loop().runUntil([&] { return isThere.load(); }, std::chrono::steady_clock::now() + 60s));
        page.join();
        return answer;
    };
    for (const char* const action :
         {"pause", "update", "tonemap linear scale=1", "whitepoint A", "layer 0 off"}) {
        EXPECT_EQ(answerTo(action), "The render takes no commands now.") << action;
    }
    EXPECT_EQ(answerTo("layer 0"), "layer takes its index, and gain=N, on, off or color=R,G,B");
    EXPECT_EQ(answerTo("stop"), "");
    await([&] { return !session.isRunning(); });
    EXPECT_EQ(answerTo("update"), "The render has ended.");
}

/// A run that comes to its end only after the artist has stopped the render still gives its image, and the
/// last one after it.
TEST_F(PictureFailuresTest, WaitForAToneMapperThatIsLate) {
    startPlugin();
    const auto picture = begin();
    library()->holdToneMapping(true);
    ASSERT_TRUE(host().executeCommand(PLUGINID_UPDATE_IMAGE_COMMAND));
    round(1.0, 1.0);
    EXPECT_EQ(runs(), 1u);
    picture->End(false);
    host().advance(5s);
    EXPECT_TRUE(picture->IsRunning());
    EXPECT_EQ(runs(), 1u);
    library()->holdToneMapping(false);
    awaitEnd(*picture);
    EXPECT_EQ(picture->result, RENDERRESULT_USERBREAK);
    EXPECT_EQ(picture->image.changes(), 2u);
    expectClean();
}

#ifndef _WIN32 // where no limit stands for a full disk
/// What can't be baked takes its constant form.
TEST_F(PictureFailuresTest, OfTemporaryFilesCostTheirTexturesAlone) {
    startPlugin();
    signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const fs::path temp = folder() / "temp";
    const struct {
        const char* name;
        fs::path folder;
        rlim_t longestFile;
    } cases[] = {{"full disk", temp, 0},
                 {"disk full in the middle", temp, 1000},
                 {"no folder", folder() / "nowhere", before.rlim_cur},
                 {"a file in its place", folder() / "document.json", before.rlim_cur}};
    for (const auto& row : cases) {
        SCOPED_TRACE(row.name);
        const Quenza::Variable temporary("TMPDIR", row.folder);
        rlimit limit = before;
        limit.rlim_cur = row.longestFile;
        setrlimit(RLIMIT_FSIZE, &limit);
        const auto picture = begin();
        setrlimit(RLIMIT_FSIZE, &before);
        end(*picture);
        EXPECT_EQ(picture->result, RENDERRESULT_USERBREAK);
        EXPECT_EQ(picture->image.changes(), 1u);
        EXPECT_EQ(host().messages(), Lines());
        expectClean();
    }
    signal(SIGXFSZ, SIG_DFL);
}
#endif

TEST_F(PictureFailuresTest, WithoutAWholeLibraryNothingHappens) {
    for (const bool isHalfThere : {false, true}) {
        SCOPED_TRACE(isHalfThere);
        stop();
        removeLibrary();
        if (isHalfThere) {
            // Under the other name: the loader knows the whole library, which is open, by this one.
            Quenza::link(fs::path(QUENZA_BIN_DIR) / "half_x64" / "quenza_sdk.dll",
                         folder() / "quenza_x64" / "quenza_rt_sdk.dll");
        }
        startPlugin();
        const auto picture = begin();
        EXPECT_FALSE(picture->IsRunning());
        EXPECT_EQ(picture->result, RENDERRESULT_OK);
        EXPECT_EQ(picture->image.changes(), 0u);
        EXPECT_EQ(host().status().history(), Lines());
        EXPECT_EQ(newLines(), Lines());
    }
}

TEST_F(PictureFailuresTest, ACallWithoutAStructureIsTold) {
    startPlugin();
    auto* const data = static_cast<VideoPostData*>(videoPost()->pluginData());
    EXPECT_EQ(data->Execute(nullptr, nullptr, nullptr), RENDERRESULT_OK);
    EXPECT_EQ(newLines(), Lines{"*vps is null."});
    // A host without a buffer, and phases out of order.
    VideoPostStruct vps;
    vps.doc = headless::toHost(host().document());
    const struct {
        int32_t phase;
        bool open;
        int32_t result;
    } calls[] = {
        {VIDEOPOSTCALL_INNER, false, RENDERRESULT_FAILED}, {VIDEOPOSTCALL_TILE, true, RENDERRESULT_FAILED},
        {VIDEOPOSTCALL_TILE, false, RENDERRESULT_OK},      {VIDEOPOSTCALL_INNER, true, RENDERRESULT_OK},
        {VIDEOPOSTCALL_INNER, false, RENDERRESULT_FAILED}, {VIDEOPOSTCALL_RENDER, true, RENDERRESULT_OK},
        {VIDEOPOSTCALL_RENDER, false, RENDERRESULT_OK},    {7, true, RENDERRESULT_OK}};
    for (const auto& call : calls) {
        vps.vp = call.phase;
        vps.open = call.open;
        EXPECT_EQ(data->Execute(nullptr, nullptr, &vps), call.result) << call.phase << call.open;
    }
    expectClean();
}

} // namespace
