// SPDX-License-Identifier: MIT
// The realtime preview from the command line, on the run-time library of this build.
#include "end_to_end/session.h"

#include "headless/app/program.h"
#include "headless/images/image_files.h"

namespace {

namespace fs = std::filesystem;

class RealtimeCommand : public Session {
protected:
    int run(std::vector<std::string> words) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int status = headless::runProgram(words);
        out_ = testing::internal::GetCapturedStdout();
        errors_ = testing::internal::GetCapturedStderr();
        return status;
    }
    std::string path(const char* name) const { return (folder() / name).string(); }
    std::string plugin(const char* name) const { return (fs::path(QUENZA_BIN_DIR) / name).string(); }
    /// By how much the image is redder than blue in the mean; components are 0 to 1.
    double redness(const char* name) const {
        headless::Image image;
        EXPECT_EQ(readImage(folder() / name, image), IMAGERESULT_OK);
        EXPECT_EQ(image.width(), 40);
        EXPECT_EQ(image.height(), 30);
        double sum = 0.0;
        for (int32_t y = 0; y < image.height(); ++y) {
            for (int32_t x = 0; x < image.width(); ++x) {
                const Vector colour = image.pixel(x, y);
                sum += colour.x - colour.z;
            }
        }
        return sum / (image.width() * image.height());
    }

    std::string out_;
    std::string errors_;
};

TEST_F(RealtimeCommand, TellsWhatIsWrong) {
    const std::string product = plugin(Quenza::PLUGIN_NAME);
    writeFile(folder() / "cube.json", R"({"format": "quenza-headless-document", "version": 1,
        "objects": [{"type": "cube", "name": "Cube"}]})");
    const struct {
        std::vector<std::string> words;
        std::string reason;
    } cases[] = {
        {{}, "realtime needs --image OUT.png"},
        {{"--image", "a.png"}, "realtime needs --seconds N"},
        {{"--image", "a.gif", "--seconds", "1"}, "--image takes a file with the suffix .png, not \"a.gif\""},
        {{"--image", "a.png", "--seconds", "soon"}, "\"soon\" is no time: it reads 2, 1.5s or 500ms"},
        {{"--image", "a.png", "--seconds", "1", "--size", "40"},
         "--size takes WIDTHxHEIGHT in pixels, each from 1 to 8192, not \"40\""},
        {{"--image", "a.png", "--seconds", "1", "--size", "0x9"},
         "--size takes WIDTHxHEIGHT in pixels, each from 1 to 8192, not \"0x9\""},
        {{"--image", "a.png", "--seconds", "1", "--move-camera", "1,2"},
         "--move-camera takes x,y,z or x,y,z@SECONDS, not \"1,2\""},
        {{"--image", "a.png", "--seconds", "1", "--move-camera", "1,2,1e99@1"},
         "--move-camera takes x,y,z or x,y,z@SECONDS, not \"1,2,1e99@1\""},
        {{"--image", "a.png", "--seconds", "1"},
         "The plug-in doesn't register its realtime preview, command 1033599"},
    };
    for (const auto& test : cases) {
        std::vector<std::string> words = {"--plugin", product, "realtime", path("cube.json")};
        words.insert(words.end(), test.words.begin(), test.words.end());
        EXPECT_NE(run(words), 0);
        EXPECT_EQ(errors_.substr(0, errors_.find('\n')), "quenza-headless: " + test.reason);
    }
    EXPECT_EQ(run({"--plugin", product, "--fixed-clock", "2026-11-24 09:05:07", "realtime", path("cube.json"),
                   "--image", "a.png", "--seconds", "1"}),
              1);
    EXPECT_EQ(errors_,
              "quenza-headless: The realtime preview waits for a clock that a fixed one stops: leave "
              "it out\n");
}

/// A brown table fills the picture; the camera of the second run goes far below it, where all is grey.
TEST_F(RealtimeCommand, ShowsWhatTheMovedCameraSees) {
    const std::string example = (fs::path(QUENZA_SOURCE_DIR) / "examples/still-life.json").string();
    std::vector<std::string> words = {"--plugin",  plugin(Quenza::REALTIME_PLUGIN_NAME),
                                      "realtime",  example,
                                      "--seconds", "0.1",
                                      "--size",    "40x30",
                                      "--image"};
    std::vector<std::string> moved = words;
    words.push_back(path("still.png"));
    moved.insert(moved.end(), {path("moved.png"), "--move-camera", "0,-5000,0"});
    ASSERT_EQ(run(words), 0) << errors_;
    EXPECT_NE(out_.find("drawing image\n"), std::string::npos);
    EXPECT_NE(out_.find("\nImage: " + path("still.png") + "\n"), std::string::npos) << out_;
    ASSERT_EQ(run(moved), 0) << errors_;
    EXPECT_NE(out_.find("Scanning scene\n"), std::string::npos);
    EXPECT_GT(redness("still.png"), 0.08);
    EXPECT_LT(redness("moved.png"), 0.02);
}

} // namespace
