// SPDX-License-Identifier: MIT
// The host's own render, with a video post that tells what it is called for.
#include "headless/app/picture_session.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/render/picture_render.h"
#include "headless/runtime_fixture.h"
#include "support/thrown_message.h"

namespace headless {
namespace {

using namespace std::chrono_literals;
using Quenza::thrownMessage;

constexpr int32_t WIDTH = 6;
constexpr int32_t HEIGHT = 4;

class Rendering : public RuntimeTest {
protected:
    Rendering() {
        HostOptions options;
        options.drivenClock = true;
        start(std::move(options)).loadPlugin(testPlugin("rendering"));
        host().open(std::make_unique<Document>());
        videoPost_ = &document().activeRenderData()->appendVideoPost(createVideoPost(TEST_RENDER));
        settings().SetLong(RDATA_XRES, WIDTH);
        settings().SetLong(RDATA_YRES, HEIGHT);
        newLines();
    }
    Document& document() { return *host().document(); }
    BaseContainer& settings() { return document().activeRenderData()->data; }
    BaseContainer& parameters() { return videoPost_->data; }
    void setRounds(int32_t rounds) { parameters().SetLong(RENDER_ROUNDS, rounds); }

    /// As a plug-in renders a document, by the engine of the settings.
    int32_t render(Image& image, int32_t flags = RENDERFLAGS_NONE) {
        return ::RenderDocument(toHost(&document()), settings(), reinterpret_cast<BaseBitmap*>(&image), flags,
                                nullptr);
    }
    int32_t renderWith(int32_t engine) {
        settings().SetLong(RDATA_RENDERENGINE, engine);
        Image image;
        image.init(WIDTH, HEIGHT, 24);
        return render(image);
    }

    VideoPost* videoPost_;
};

TEST_F(Rendering, ClosesThePhasesThatWereOpened) {
    const struct {
        int32_t phase;
        bool opening;
        int32_t failure;
        bool throws;
        int32_t result;
        int32_t deepest; ///< The last phase that opens, from 3 on.
    } cases[] = {
        {0, false, RENDERRESULT_OK, false, RENDERRESULT_OK, 5},
        {5, true, RENDERRESULT_FAILED, false, RENDERRESULT_FAILED, 5},
        {3, true, RENDERRESULT_NOMACHINE, false, RENDERRESULT_NOMACHINE, 3},
        {4, false, RENDERRESULT_USERBREAK, false, RENDERRESULT_USERBREAK, 5},
        {4, true, RENDERRESULT_OK, true, RENDERRESULT_FAILED, 4},
    };
    for (const auto& test : cases) {
        parameters().SetLong(RENDER_FAILING_PHASE, test.phase);
        parameters().SetBool(RENDER_FAILS_OPENING, test.opening);
        parameters().SetLong(RENDER_FAILURE, test.failure);
        parameters().SetBool(RENDER_THROWS, test.throws);
        Image image;
        image.init(WIDTH, HEIGHT, 24);
        EXPECT_EQ(render(image, RENDERFLAGS_EXTERNAL), test.result);
        Lines expected = {"prepare"};
        for (int32_t phase = 3; phase <= test.deepest; ++phase) {
            expected.push_back(std::to_string(phase) + " opens, flags 1");
        }
        for (int32_t phase = test.deepest; phase >= 3; --phase) {
            expected.push_back(std::to_string(phase) + " closes, flags 1");
        }
        EXPECT_EQ(newLines(), expected) << test.phase << (test.opening ? " opening" : " closing");
    }
    EXPECT_EQ(host().errors().lines(), Lines{"The render ended with an exception: out of paint"});
}

TEST_F(Rendering, PaintsIntoBitmapsOfEitherDepth) {
    setRounds(1);
    Image bytes;
    bytes.init(WIDTH, HEIGHT, 24);
    EXPECT_EQ(render(bytes), RENDERRESULT_OK);
    EXPECT_EQ(bytes.bytes()[3 * WIDTH * HEIGHT - 1], 100);
    Image floats;
    floats.init(WIDTH, HEIGHT, 96);
    EXPECT_EQ(render(floats), RENDERRESULT_OK);
    EXPECT_FLOAT_EQ(floats.floats()[3 * WIDTH * HEIGHT - 1], 100.0f / 255.0f);
    Image other;
    other.init(HEIGHT, WIDTH, 24);
    EXPECT_EQ(render(other), RENDERRESULT_FAILED);
    EXPECT_EQ(host().errors().lines(),
              Lines{"The bitmap of a render has 4 by 6 pixels, its settings say 6 by 4"});
}

TEST_F(Rendering, TakesTheVideoPostOfTheEngine) {
    document().activeRenderData()->insertVideoPost(std::make_unique<VideoPost>(4711), nullptr);
    EXPECT_EQ(renderWith(0), RENDERRESULT_OK) << "the first of a plug-in";
    EXPECT_EQ(renderWith(TEST_RENDER), RENDERRESULT_OK);
    EXPECT_EQ(renderWith(1), RENDERRESULT_FAILED);
    EXPECT_EQ(renderWith(4711), RENDERRESULT_FAILED);
    videoPost_->info |= BIT_VPDISABLED;
    EXPECT_EQ(renderWith(TEST_RENDER), RENDERRESULT_FAILED);
    EXPECT_EQ(renderWith(0), RENDERRESULT_FAILED);
    EXPECT_EQ(host().errors().lines(),
              (Lines{"The host's standard renderer isn't there: render with a video post's",
                     "The document has no enabled video post that renders of type 4711",
                     "The document has no enabled video post that renders of type 9000013",
                     "The document has no enabled video post that renders"}));
}

TEST_F(Rendering, TellsTheArtistHowItEnded) {
    const struct {
        int32_t rounds;
        int32_t failure;
        bool throws;
        bool stops;
        std::optional<std::string> told;
    } cases[] = {
        {2, RENDERRESULT_OK, false, false, std::nullopt},
        {1000, RENDERRESULT_OK, false, true, std::nullopt},
        {1000, RENDERRESULT_USERBREAK, false, true, std::nullopt},
        {0, RENDERRESULT_OK, false, false, "The render gave no image"},
        {0, RENDERRESULT_USERBREAK, false, true, "The render was stopped before it gave an image"},
        {1, RENDERRESULT_USERBREAK, false, false, "The render failed: 3 closes, flags 1"},
        {1, RENDERRESULT_FAILED, true, false,
         "The render failed: The render ended with an exception: out of paint"},
    };
    parameters().SetLong(RENDER_FAILING_PHASE, VIDEOPOSTCALL_RENDER);
    for (const auto& test : cases) {
        setRounds(test.rounds);
        parameters().SetLong(RENDER_FAILURE, test.failure);
        parameters().SetBool(RENDER_THROWS, test.throws);
        PictureSession session(host(), {});
        session.start();
        host().advance(0ms);
        if (test.stops) {
            session.stop();
        }
        host().advance(100ms);
        EXPECT_FALSE(session.isRunning());
        EXPECT_EQ(session.failure(), test.told) << test.rounds;
    }
}

TEST_F(Rendering, EndsBeforeItsDocumentIsClosed) {
    setRounds(1000);
    PictureRender picture(host(), {}, {});
    picture.start();
    host().advance(50ms);
    host().open(std::make_unique<Document>());
    EXPECT_FALSE(picture.isRunning());
    EXPECT_TRUE(picture.wasClosed());
    EXPECT_EQ(newLines().back(), "3 closes, flags 1");
    EXPECT_EQ(thrownMessage<HostError>([&] { picture.start(); }), "The render could not be started");
    EXPECT_EQ(thrownMessage<HostError>([&] { PictureRender(host(), {}, {}); }),
              "The document can't be rendered");
}

TEST(RenderImageTest, TakesWhatLiesInside) {
    RenderImage image(3, 2);
    const uint8_t pixels[] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    const struct {
        int32_t x, y, count;
        bool isInside;
    } cases[] = {{0, 0, 3, true},          {2, 1, 1, true},         {3, 0, 0, true},   {1, 0, 3, false},
                 {0, 2, 1, false},         {0, -1, 1, false},       {-1, 0, 1, false}, {0, 0, -1, false},
                 {INT32_MAX, 0, 1, false}, {1, 0, INT32_MAX, false}};
    for (const auto& test : cases) {
        EXPECT_EQ(image.setLine(test.x, test.y, test.count, pixels), test.isInside)
            << test.x << " " << test.y;
    }
    EXPECT_FALSE(image.setLine(0, 0, 1, nullptr));
    EXPECT_EQ(thrownMessage<HostError>([] { RenderImage(0, 5); }), "No image can have 0 by 5 pixels");
    Image copy;
    EXPECT_EQ(image.copyTo(copy), 0u);
    EXPECT_EQ(std::vector<uint8_t>(copy.bytes(), copy.bytes() + 18),
              (std::vector<uint8_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 0, 0, 0, 0, 0, 0, 1, 2, 3}));
}

} // namespace
} // namespace headless
