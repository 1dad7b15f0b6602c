// SPDX-License-Identifier: MIT
// What the command line of "picture" may say.
#include "headless/app/command_line.h"
#include "headless/app/phase_lines.h"
#include "headless/app/picture_arguments.h"
#include "headless/app/plugin_numbers.h"
#include "headless/images/image_files.h"
#include "support/thrown_message.h"

#include <gtest/gtest.h>

namespace headless {
namespace {

using namespace std::chrono_literals;
using Quenza::thrownMessage;
using Words = std::vector<std::string>;

PictureOrder read(const Words& words) {
    Words all = {"picture", "a.json", "--image", "/out/a.png"};
    all.insert(all.end(), words.begin(), words.end());
    return readPictureOrder(parseArguments(commandLine(), all));
}

TEST(PictureArguments, NameGadgetsOfTheDialog) {
    const struct {
        const char* text;
        int32_t method;
        std::vector<std::pair<int32_t, float>> numbers;
        const char* name;
    } cases[] = {
        {"tonemap reinhard burn=4  prescale=-1 postscale=1e2",
         TONEMAP_REINHARD,
         {{TONEMAP_BURN, 4.0f}, {TONEMAP_PRE_SCALE, -1.0f}, {TONEMAP_POST_SCALE, 100.0f}},
         ""},
        {"tonemap linear", TONEMAP_LINEAR, {}, ""},
        {"tonemap linear scale=.5", TONEMAP_LINEAR, {{TONEMAP_SCALE, 0.5f}}, ""},
        {"tonemap camera iso=200 response=dscs315 ev=-2",
         TONEMAP_CAMERA,
         {{TONEMAP_FILM_ISO, 200.0f}, {TONEMAP_EV_ADJUST, -2.0f}},
         "dscs315"},
        {"whitepoint 0.3,0.4", 0, {{WHITE_POINT_X, 0.3f}, {WHITE_POINT_Y, 0.4f}}, ""},
        {"whitepoint 9300  K", 0, {}, "9300 K"},
    };
    for (const auto& test : cases) {
        const PictureAction action = parsePictureAction(test.text);
        std::vector<std::pair<int32_t, float>> numbers;
        for (const PictureAction::Number& number : action.numbers) {
            numbers.emplace_back(number.gadget, number.value);
        }
        EXPECT_EQ(action.method, test.method) << test.text;
        EXPECT_EQ(numbers, test.numbers) << test.text;
        EXPECT_EQ(action.name, test.name) << test.text;
    }
    const PictureAction layer = parsePictureAction("layer 0 color=1,0.5,0 on");
    EXPECT_EQ(layer.colour, Vector(1.0f, 0.5f, 0.0f));
    EXPECT_EQ(layer.isOn, true);
    EXPECT_FALSE(layer.gain);
}

TEST(PictureArguments, TellWhatIsWrong) {
    const struct {
        Words words;
        const char* message;
    } cases[] = {
        {{"--at", "2s"}, "An action is missing"},
        {{"--at", "soon", "pause"}, "\"soon\" is no time: it reads 2, 1.5s or 500ms"},
        {{"--stop-after", "1e7"}, "\"1e7\" is no time: it reads 2, 1.5s or 500ms"},
        {{"--stop-after", "-1s"}, "\"-1s\" is no time: it reads 2, 1.5s or 500ms"},
        {{"--stop-after", "nan"}, "\"nan\" is no time: it reads 2, 1.5s or 500ms"},
        {{"--at", "2", "pauze"}, "There is no action pauze; is pause meant?"},
        {{"--at", "2", "pause", "b.json"}, "pause takes nothing, not b.json"},
        {{"--at", "2", "tonemap"}, "tonemap takes reinhard, linear or camera"},
        {{"--at", "2", "tonemap", "reinhart"}, "There is no tone mapping reinhart; is reinhard meant?"},
        {{"--at", "2", "tonemap", "linear", "burn=1"}, "There is no number of tonemap linear called burn"},
        {{"--at", "2", "tonemap", "reinhard", "burn"}, "burn can't be \"\": it takes a number"},
        {{"--at", "2", "tonemap", "reinhard", "burn=inf"}, "burn can't be \"inf\": it takes a number"},
        {{"--at", "2", "tonemap", "linear", "response=x"},
         "There is no number of tonemap linear called response"},
        {{"--at", "2", "whitepoint"}, "whitepoint takes a name or X,Y"},
        {{"--at", "2", "layer", "1"}, "layer takes its index, and gain=N, on, off or color=R,G,B"},
        {{"--at", "2", "layer", "-1", "off"}, "\"-1\" is no index of a layer: the first is 0"},
        {{"--at", "2", "layer", "1000000", "off"}, "\"1000000\" is no index of a layer: the first is 0"},
        {{"--at", "2", "layer", "0", "gian=1"}, "A layer has no gian=1; is gain meant?"},
        {{"--at", "2", "layer", "0", "color=1,2,0"}, "color can't be \"1,2,0\": it takes R,G,B from 0 to 1"},
        {{"--rows", "4"}, "--rows can't be \"4\": it reads 10-20, from the first to before the second"},
        {{"--columns", "4-4"},
         "--columns can't be \"4-4\": it reads 10-20, from the first to before the second"},
        {{"--rows", "1-2", "--columns", "1-2"}, "--rows and --columns exclude each other"},
        {{"--size", "24"},
         "\"24\" is no size of an image: it reads 640x480, with sides up to 65536 and "
         "134217728 pixels in all"},
        {{"--size", "24x0"},
         "\"24x0\" is no size of an image: it reads 640x480, with sides up to 65536 and "
         "134217728 pixels in all"},
        {{"--size", "60000x60000"},
         "\"60000x60000\" is no size of an image: it reads 640x480, with sides up to 65536 and "
         "134217728 pixels in all"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(thrownMessage<UsageError>([&] { read(test.words); }), test.message);
    }
    EXPECT_EQ(thrownMessage<UsageError>([] {
                  readPictureOrder(parseArguments(commandLine(), Words{"picture", "a"}));
              }),
              "picture needs --image OUT.png");
    EXPECT_EQ(thrownMessage<UsageError>([] { PictureOrder("scene.qzs"); }),
              "--image writes an image: scene.qzs should end with .png, .jpg, .tif, .bmp or .tga");
    EXPECT_EQ(thrownMessage<UsageError>([] { PictureOrder("a.TIF"); }),
              canWrite(FILTER_TIF) ? "no exception" : "--image can't be a.TIF: this program writes no .tif");
}

TEST(PhaseLinesTest, TellEachKindOfStatusOnce) {
    PhaseLines lines;
    testing::internal::CaptureStderr();
    for (const char* const text : {"Building scene...", "Rendering: 0.0 s/px", "Rendering: 0.5 s/px",
                                   "Tonemapping...", "Rendering: 10.0 s/px"}) {
        lines(text);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "Building scene...\nRendering: 0.0 s/px\nTonemapping...\nRendering: 10.0 s/px\n");
}

} // namespace
} // namespace headless
