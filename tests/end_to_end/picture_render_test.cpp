// SPDX-License-Identifier: MIT
#include "end_to_end/picture_fixture.h"

#include "headless/documents/load_document.h"
#include "shared/plugin_ids.h"

#include <algorithm>

namespace {

using namespace std::chrono_literals;

class PictureRenderTest : public PictureFixture {};

/// The first image comes when three seconds have passed, and each next one after twice the time.
TEST_F(PictureRenderTest, ShowsEverRarerImagesUntilItIsStopped) {
    startPlugin();
    const auto picture = begin();
    EXPECT_EQ(library()->setUps().at(0).gamma, 2.2f);
    EXPECT_EQ(library()->setUps().at(0).width, 8u);
    EXPECT_EQ(library()->setUps().at(0).height, 6u);
    const Lines arguments = library()->arguments();
    ASSERT_EQ(arguments.size(), 3u);
    EXPECT_EQ(arguments[0], (userFolder() / "quickrender" / "quickrender.qzs").string());
    EXPECT_EQ(arguments[1], "-seed");
    EXPECT_EQ(arguments[2].find_first_not_of("0123456789"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(arguments[0])) << "the scene's path is a mere name";

    round(0.5, 0.04);
    EXPECT_EQ(lastStatus(), "Rendering: 0.0 s/px 0%");
    round(2.0, 4.26);
    EXPECT_EQ(lastStatus(), "Rendering: 4.3 s/px 50%");
    // Elapsed seconds and images so far. The interval counts from the moment at which the last image began.
    const struct {
        double before, after;
        const char* statusBefore;
    } images[] = {{3.0, 3.25, "Rendering: 5.0 s/px 100%"},
                  {7.25, 7.5, "Rendering: 5.0 s/px 100%"},
                  {11.5, 15.75, "Rendering: 5.0 s/px 50%"},
                  {31.75, 32.0, "Rendering: 5.0 s/px 100%"}};
    size_t count = 0;
    for (const auto& image : images) {
        round(image.before, 5.0);
        EXPECT_EQ(runs(), count) << image.before;
        EXPECT_EQ(lastStatus(), image.statusBefore) << image.before;
        round(image.after, 5.0);
        EXPECT_EQ(runs(), ++count) << image.after;
        awaitImage(*picture, count);
    }
    EXPECT_EQ(picture->pixel(7, 5), (std::vector<int>{128, 0, 0}));

    const size_t polls = library()->count("QuenzaInterface.getSamplesPerPixel");
    host().advance(500ms);
    EXPECT_EQ(library()->count("QuenzaInterface.getSamplesPerPixel"), polls + 10);

    end(*picture);
    EXPECT_EQ(picture->result, RENDERRESULT_USERBREAK);
    EXPECT_EQ(picture->image.changes(), count + 1);
    Lines texts = statusTexts();
    EXPECT_EQ(Lines(texts.begin(), texts.begin() + 4),
              (Lines{"", "Exporting scene...", "Building scene...", "Rendering: 0.0 s/px"}));
    const Lines last(texts.end() - 5, texts.end());
    EXPECT_EQ(last,
              (Lines{"Rendering: 5.0 s/px", "Final tonemapping...", "", "Closing render threads...", ""}));
    EXPECT_EQ(size_t(std::count(texts.begin(), texts.end(), "Tonemapping...")), count);
    EXPECT_EQ(library()->violations(), Lines());
    EXPECT_EQ(library()->liveThreads(), 0);
    EXPECT_EQ(library()->liveObjects(), 0);
}

TEST_F(PictureRenderTest, CanBePausedUpdatedAndResumed) {
    constexpr int32_t COMMANDS[] = {PLUGINID_PAUSE_COMMAND, PLUGINID_RESUME_COMMAND,
                                    PLUGINID_UPDATE_IMAGE_COMMAND};
    startPlugin();
    const auto states = [&] {
        std::vector<bool> enabled;
        for (const int32_t command : COMMANDS) {
            enabled.push_back(isEnabled(command));
        }
        return enabled;
    };
    EXPECT_EQ(states(), (std::vector<bool>{false, false, false}));
    const auto picture = begin();
    round(1.0, 2.0);
    EXPECT_EQ(states(), (std::vector<bool>{true, false, true}));

    ASSERT_TRUE(host().executeCommand(PLUGINID_PAUSE_COMMAND));
    EXPECT_EQ(states(), (std::vector<bool>{false, true, true}));
    EXPECT_EQ(library()->count("QuenzaInterface.pause"), 1u);
    round(1.0, 2.5);
    EXPECT_EQ(lastStatus(), "Paused: 2.5 s/px");
    host().advance(10s);
    EXPECT_EQ(runs(), 0u);

    // An image on demand doesn't put off the next one.
    ASSERT_TRUE(host().executeCommand(PLUGINID_UPDATE_IMAGE_COMMAND));
    awaitImage(*picture, 1);
    EXPECT_EQ(runs(), 1u);
    const Lines texts = statusTexts();
    EXPECT_NE(std::find(texts.begin(), texts.end(), "Tonemapping..."), texts.end());
    EXPECT_EQ(lastStatus(), "Paused: 2.5 s/px");

    ASSERT_TRUE(host().executeCommand(PLUGINID_RESUME_COMMAND));
    EXPECT_EQ(library()->count("QuenzaInterface.resume"), 1u);
    EXPECT_EQ(states(), (std::vector<bool>{true, false, true}));
    round(3.0, 3.0);
    EXPECT_EQ(lastStatus(), "Rendering: 3.0 s/px 100%");
    round(3.5, 3.0);
    EXPECT_EQ(runs(), 2u);
    awaitImage(*picture, 2);

    // A request during a run is done after it.
    library()->holdToneMapping(true);
    ASSERT_TRUE(host().executeCommand(PLUGINID_UPDATE_IMAGE_COMMAND));
    host().advance(200ms);
    ASSERT_TRUE(host().executeCommand(PLUGINID_UPDATE_IMAGE_COMMAND));
    host().advance(200ms);
    EXPECT_EQ(runs(), 3u);
    library()->holdToneMapping(false);
    awaitImage(*picture, 4);

    // A render that ends while it is paused leaves nothing to the next one.
    ASSERT_TRUE(host().executeCommand(PLUGINID_PAUSE_COMMAND));
    end(*picture);
    EXPECT_EQ(states(), (std::vector<bool>{false, false, false}));
    const auto next = begin();
    EXPECT_EQ(states(), (std::vector<bool>{true, false, true}));
    end(*next);
    EXPECT_EQ(library()->violations(), Lines());
}

TEST_F(PictureRenderTest, EndsAtItsLimits) {
    const struct {
        const char* settings;
        int32_t flags;
        double elapsed, samplesPerPixel;
        bool ends;
    } cases[] = {
        {R"("RS_HALT_SPP": -1)", RENDERFLAGS_EXTERNAL, 1e6, 1e6, false},
        {R"("RS_HALT_SPP": 10, "RS_HALT_TIME": 2)", RENDERFLAGS_EXTERNAL, 3.0, 10.0, false},
        {R"("RS_HALT_SPP": 10, "RS_HALT_TIME": 2)", RENDERFLAGS_EXTERNAL, 1.0, 10.5, true},
        {R"("RS_HALT_TIME": 2)", RENDERFLAGS_EXTERNAL, 2.0, 1e6, false},
        {R"("RS_HALT_TIME": 2)", RENDERFLAGS_EXTERNAL, 2.5, 0.0, true},
        {R"("RS_HALT_SPP": 100, "RS_HALT_TIME": 2)", RENDERFLAGS_IRR, 3.0, 16.0, false},
        {R"("RS_HALT_SPP": 100, "RS_HALT_TIME": 2)", RENDERFLAGS_IRR, 1.0, 16.5, true},
    };
    for (const auto& row : cases) {
        SCOPED_TRACE(std::string(row.settings) + " at " + std::to_string(row.samplesPerPixel));
        stop();
        library()->reset();
        startPlugin(row.settings);
        const auto picture = begin(row.flags);
        round(row.elapsed, row.samplesPerPixel);
        if (row.ends) {
            awaitEnd(*picture);
            EXPECT_EQ(picture->result, RENDERRESULT_OK);
            EXPECT_EQ(picture->image.changes(), 1u);
        } else {
            host().advance(5s);
            EXPECT_TRUE(picture->IsRunning());
            end(*picture);
        }
    }
}

/// Nor do they get a say in what the commands act on.
TEST_F(PictureRenderTest, PreviewsShowTheirLastImageAlone) {
    startPlugin(R"("RS_NETWORK": true)");
    const struct {
        int32_t flags;
        double samplesPerPixel;
        uint64_t images;
    } cases[] = {{RENDERFLAGS_PREVIEWRENDER, 0.05, 0},
                 {RENDERFLAGS_PREVIEWRENDER, 0.2, 1},
                 {RENDERFLAGS_IRR | RENDERFLAGS_EXTERNAL, 0.05, 0}};
    for (const auto& row : cases) {
        SCOPED_TRACE(std::to_string(row.flags) + " at " + std::to_string(row.samplesPerPixel));
        library()->setProgress(0.0, 0.0);
        const auto picture = begin(row.flags);
        EXPECT_EQ(library()->arguments().size(), 3u) << "previews aren't for the network";
        round(100.0, row.samplesPerPixel);
        host().advance(1s);
        EXPECT_EQ(picture->image.changes(), 0u);
        EXPECT_FALSE(isEnabled(PLUGINID_PAUSE_COMMAND));
        end(*picture);
        EXPECT_EQ(picture->image.changes(), row.images);
        EXPECT_EQ(lastStatus(), "");
    }
    const auto picture = begin();
    const Lines arguments = library()->arguments();
    ASSERT_EQ(arguments.size(), 5u);
    EXPECT_EQ(arguments[3] + " " + arguments[4], "-n wm");
    end(*picture);
}

TEST_F(PictureRenderTest, FillsTheRegionThatIsWanted) {
    startPlugin();
    library()->setLayers([](uint32_t, uint32_t x, uint32_t y) {
        return std::array<float, 3>{float(x) / 255.0f, float(y) / 255.0f, 1.0f};
    });
    const struct {
        headless::RenderRegion region;
        // Of what is rendered.
        int left, top, width, height;
    } cases[] = {{{RENDERREGION_ROWS, 2, 5}, 0, 2, 8, 3},
                 {{RENDERREGION_COLUMNS, 1, 3}, 1, 0, 2, 6},
                 {{RENDERREGION_ROWS, 4, 100}, 0, 4, 8, 2},
                 {{RENDERREGION_NONE, 0, 0}, 0, 0, 8, 6}};
    for (const auto& row : cases) {
        SCOPED_TRACE(std::to_string(row.region.kind) + " from " + std::to_string(row.region.from));
        const auto picture = begin(RENDERFLAGS_EXTERNAL, row.region);
        EXPECT_EQ(library()->setUps().back().width, uint32_t(row.width));
        EXPECT_EQ(library()->setUps().back().height, uint32_t(row.height));
        end(*picture);
        for (int y = 0; y < Picture::HEIGHT; ++y) {
            for (int x = 0; x < Picture::WIDTH; ++x) {
                const int right = x - row.left;
                const int down = y - row.top;
                const bool isInside = right >= 0 && down >= 0 && right < row.width && down < row.height;
                EXPECT_EQ(picture->pixel(x, y),
                          isInside ? std::vector<int>({right, down, 255}) : std::vector<int>(3))
                    << x << " " << y;
            }
        }
    }
    const auto nothing = begin(RENDERFLAGS_EXTERNAL, headless::RenderRegion{RENDERREGION_ROWS, 3, 3});
    EXPECT_FALSE(nothing->IsRunning());
    EXPECT_EQ(nothing->result, RENDERRESULT_FAILED);
}

/// What the artist changes while it renders is in the next image, without a new start.
TEST_F(PictureRenderTest, TakesOverWhatTheDialogChanges) {
    startPlugin();
    const auto picture = begin();
    round(1.0, 1.0);
    EXPECT_EQ(library()->takenStates().size(), 1u);
    GeDialog* const dialog = &openToneMapping();
    ASSERT_TRUE(host().dialogs().enter(dialog, METHOD, GeData(LINEAR)));
    ASSERT_TRUE(host().dialogs().enter(dialog, SCALE, GeData(0.5f)));
    await([&] { return library()->takenStates().size() > 1; });
    EXPECT_EQ(library()->takenStates().back().scale, 0.5);
    round(1.0, 1.0);
    EXPECT_EQ(library()->takenStates().size(), 2u) << "the marks are taken once";
    ASSERT_TRUE(host().executeCommand(PLUGINID_UPDATE_IMAGE_COMMAND));
    awaitImage(*picture, 1);
    EXPECT_EQ(picture->pixel(0, 0), (std::vector<int>{64, 0, 0}));
    EXPECT_EQ(library()->count("QuenzaInterface.initialiseWithScene"), 1u);

    // What the library refuses is told, and the picture goes on as it was.
    library()->fail("ToneMapperDLLAPI.update", 1, "No such film.");
    ASSERT_TRUE(host().dialogs().enter(dialog, SCALE, GeData(1.0f)));
    await([&] { return printed("No such film."); });
    ASSERT_TRUE(host().executeCommand(PLUGINID_UPDATE_IMAGE_COMMAND));
    awaitImage(*picture, 2);
    EXPECT_EQ(picture->pixel(0, 0), (std::vector<int>{64, 0, 0}));

    // Nor does it cost the image that is being made.
    library()->holdToneMapping(true);
    ASSERT_TRUE(host().executeCommand(PLUGINID_UPDATE_IMAGE_COMMAND));
    round(1.0, 1.0);
    EXPECT_EQ(runs(), 3u);
    library()->fail("ToneMapperDLLAPI.update", 1, "No such paper.");
    ASSERT_TRUE(host().dialogs().enter(dialog, SCALE, GeData(0.25f)));
    round(1.0, 1.0);
    library()->holdToneMapping(false);
    awaitImage(*picture, 3);
    await([&] { return printed("No such paper."); });
    end(*picture);
    EXPECT_EQ(library()->violations(), Lines());
}

/// The library holds the scene for as long as it wants, and the artist goes on working. The next image shows
/// what was changed before it, also when the dialog is closed or the render ends meanwhile.
TEST_F(PictureRenderTest, KeepsWhatTheDialogChangesWhileTheLibraryHoldsTheScene) {
    startPlugin();
    for (const bool isStopped : {false, true}) {
        SCOPED_TRACE(isStopped);
        const auto picture = begin();
        round(1.0, 1.0);
        const size_t runsBefore = runs();
        library()->holdScene(true);
        makeLinear(0.5f);
        ASSERT_TRUE(host().executeCommand(PLUGINID_UPDATE_IMAGE_COMMAND));
        host().advance(500ms);
        EXPECT_EQ(runs(), runsBefore);
        if (!isStopped) {
            library()->holdScene(false);
            awaitImage(*picture, 1);
            EXPECT_EQ(picture->pixel(0, 0), (std::vector<int>{64, 0, 0}));
        }
        end(*picture);
        EXPECT_EQ(picture->pixel(0, 0), (std::vector<int>{64, 0, 0}));
    }
    // The next render is another's.
    const auto next = begin();
    EXPECT_NE(library()->takenStates().back().scale, 0.5);
    end(*next);
    EXPECT_EQ(library()->violations(), Lines());
}

/// What is changed behind the last image gives another, whether or not the library holds the scene then.
TEST_F(PictureRenderTest, EndsWithAllThatTheDialogHasChanged) {
    startPlugin();
    for (const bool isSceneHeld : {false, true}) {
        SCOPED_TRACE(isSceneHeld);
        library()->reset();
        const auto picture = begin();
        round(1.0, 1.0);
        library()->holdToneMapping(true);
        library()->ignoreStop(isSceneHeld);
        picture->End(false);
        await([&] { return runs() == 1; });
        if (isSceneHeld) {
            library()->holdScene(true);
        }
        makeLinear(1.0f);
        makeLinear(0.5f);
        host().advance(500ms);
        EXPECT_EQ(lastStatus(), "Final tonemapping... 100%");
        EXPECT_EQ(runs(), 1u);
        EXPECT_EQ(picture->image.changes(), 0u);
        if (isSceneHeld) {
            library()->holdScene(false);
        }
        library()->holdToneMapping(false);
        awaitEnd(*picture);
        EXPECT_EQ(picture->result, RENDERRESULT_USERBREAK);
        EXPECT_EQ(picture->pixel(0, 0), (std::vector<int>{64, 0, 0}));
        EXPECT_EQ(picture->image.changes(), 2u);
        const Lines texts = statusTexts();
        // The bar is set before the text.
        EXPECT_EQ(Lines(texts.end() - 7, texts.end()),
                  (Lines{"Final tonemapping...", "", "100%", "Final tonemapping...", "",
                         "Closing render threads...", ""}));
        EXPECT_EQ(library()->violations(), Lines());
    }
}

/// The commands stay with the render that was first, then go to the other.
TEST_F(PictureRenderTest, TwoAtOnceDoNotDisturbEachOther) {
    startPlugin();
    const std::string file = writeDocumentFile("other.json", R"("RS_HALT_SPP": -1)").string();
    const auto copy = headless::openDocument(file, {});
    const auto previewed = headless::openDocument(file, {});
    const auto first = begin();
    ASSERT_TRUE(host().executeCommand(PLUGINID_PAUSE_COMMAND));
    const auto second = beginOn(*copy.document, RENDERFLAGS_EXTERNAL);
    const auto preview = beginOn(*previewed.document, RENDERFLAGS_PREVIEWRENDER);
    round(3.5, 1.0);
    awaitImage(*second, 1);
    end(*preview);
    EXPECT_TRUE(isEnabled(PLUGINID_RESUME_COMMAND)) << "the first is paused still";
    end(*first);
    host().advance(50ms);
    EXPECT_TRUE(isEnabled(PLUGINID_PAUSE_COMMAND));
    end(*second);
    EXPECT_FALSE(isEnabled(PLUGINID_UPDATE_IMAGE_COMMAND));
    EXPECT_EQ(library()->violations(), Lines());
    EXPECT_EQ(library()->liveObjects(), 0);
}

} // namespace
