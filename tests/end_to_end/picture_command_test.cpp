// SPDX-License-Identifier: MIT
// Pictures of a small scene with two light layers, by the renderer's library: from the command line, and with
// an artist who acts on the render.
#include "end_to_end/plugin_folder.h"
#include "end_to_end/programs.h"

#include "headless/app/export_settings.h"
#include "headless/app/picture_session.h"
#include "headless/images/image_files.h"

#include <algorithm>
#include <cstring>
#include <sstream>

#ifndef _WIN32
#include <csignal>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>
#include <utmp.h>
#endif

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using headless::Image;
using headless::parsePictureAction;
using headless::PictureSession;

namespace {

constexpr auto LIMIT = 120s;
/// What the ray tracer's threads say to a Windows that binds no thread to a processor.
constexpr const char* EMBREE_ON_WINE = "Warning: SetThreadIdealProcessorEx failed";
constexpr int32_t WIDTH = 36;
constexpr int32_t HEIGHT = 24;

const fs::path SCENE = fs::path(QUENZA_SOURCE_DIR) / "examples" / "light-layers.json";

/// Sum of the red, green or blue of the pixels of some rows.
int64_t sumOf(const Image& image, size_t component, int32_t firstRow = 0, int32_t endRow = HEIGHT) {
    int64_t sum = 0;
    for (int32_t pixel = firstRow * image.width(); pixel < endRow * image.width(); ++pixel) {
        sum += image.bytes()[3 * static_cast<size_t>(pixel) + component];
    }
    return sum;
}
constexpr size_t RED = 0;
constexpr size_t BLUE = 2;

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

class PictureCommand : public Programs {
protected:
    PictureCommand() { fs::create_directory(folder() / "out"); }
    std::string imagePath() const { return (folder() / "out" / "image.png").string(); }
    int picture(const std::string& more, const std::string& scene = SCENE.string()) {
        return headless("picture '" + scene + "' --size 36x24 --set RS_HALT_SPP=4 --image '" + imagePath() +
                        "' " + more);
    }
    Image image() const {
        Image image;
        EXPECT_EQ(headless::readImage(imagePath(), image), IMAGERESULT_OK);
        return image;
    }
    std::string lastError() const { return errors.empty() ? "" : linesOf(errors).back(); }
};

} // namespace

TEST_F(PictureCommand, WritesAnImageAndTellsItsPhases) {
    ASSERT_EQ(picture("--image x.png"), 2) << "given twice";
    ASSERT_EQ(picture("--at 1000s pause"), 0) << errors;
    std::vector<std::string> told = linesOf(errors);
    std::erase_if(told, [](const std::string& line) {
        return line.starts_with("Rendering: ") || line.starts_with(EMBREE_ON_WINE);
    });
    EXPECT_EQ(told, (std::vector<std::string>{"Exporting scene...", "Building scene...",
                                              "Final tonemapping...", "Closing render threads...",
                                              "--at 1000s pause: the render had ended before"}));
    EXPECT_EQ(linesOf(out).back(), "Image: " + imagePath());
    const Image whole = image();
    ASSERT_EQ(whole.width(), WIDTH);
    ASSERT_EQ(whole.height(), HEIGHT);
    EXPECT_GT(sumOf(whole, RED), 10 * WIDTH * HEIGHT) << "it shows something";

    ASSERT_EQ(picture("--rows 6-18 --interactive"), 0) << errors;
    const Image rows = image();
    EXPECT_EQ(sumOf(rows, RED, 0, 6) + sumOf(rows, RED, 18, 24), 0);
    EXPECT_GT(sumOf(rows, RED, 6, 18), 10 * WIDTH * 12);
    EXPECT_EQ(listFiles(folder() / "out"), std::vector<std::string>{"image.png"});
}

TEST_F(PictureCommand, TellsWhatCouldNotBeDone) {
    EXPECT_EQ(picture("--rows 10-30"), 2);
    EXPECT_EQ(linesOf(errors).at(0), "quenza-headless: --rows 10-30 lies outside: the image has 24 rows");
    EXPECT_EQ(picture("--set RS_HALT_SPP=-1 --at 0 layer 99 off --at 0 whitepoint D64 --at 1s stop"), 1);
    EXPECT_EQ(
        lastError(),
        "quenza-headless: Not everything was done: --at 0 layer 99 off: The light layer 99 isn't there");
    EXPECT_NE(errors.find("--at 0 whitepoint D64: There is no white point \"D64\""), std::string::npos)
        << errors;
    fs::remove(imagePath());
    fs::create_directory(imagePath());
    EXPECT_EQ(picture(""), 1);
    EXPECT_EQ(errors, "quenza-headless: The image " + imagePath() +
                          " can't be written: It is a directory or a device, not a file\n")
        << "told before the render";
    fs::remove(imagePath());
    EXPECT_EQ(picture("--plugin '" + placePlugin(folder()).string() + "'"), 1)
        << "a plug-in without a library";
    const std::string library = QUENZA_RENDERER_DIR;
    EXPECT_EQ(lastError(),
              "quenza-headless: The render gave no image: the renderer's library could not be loaded "
              "(Failed to load DLL from '" +
                  library + "' (Error code: 2)). Put it into " + library + ", or install the renderer");
}

#ifndef _WIN32 // whose consoles have no other end

namespace {

/// A terminal with the program in its foreground.
class TerminalRun {
public:
    explicit TerminalRun(std::vector<std::string> words) {
        int terminal = -1;
        EXPECT_EQ(openpty(&master_, &terminal, nullptr, nullptr, nullptr), 0);
        tcgetattr(master_, &before_);
        std::vector<char*> arguments;
        for (std::string& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        process_ = fork();
        if (process_ == 0) {
            login_tty(terminal);
            execv(arguments[0], arguments.data());
            _exit(127);
        }
        // The terminal stays when the program has gone.
        terminal_ = terminal;
    }
    ~TerminalRun() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
        close(master_);
        close(terminal_);
    }
    /// Reads until the program has shown a text. False when nothing came for long.
    bool awaitText(const std::string& text) {
        char buffer[4096];
        pollfd source{master_, POLLIN, 0};
        const int limit = static_cast<int>(std::chrono::milliseconds(LIMIT).count());
        while (shown_.find(text) == std::string::npos) {
            const ssize_t got = poll(&source, 1, limit) == 1 ? read(master_, buffer, sizeof buffer) : 0;
            if (got <= 0) {
                return false;
            }
            shown_.append(buffer, static_cast<size_t>(got));
        }
        shown_.erase(0, shown_.find(text) + text.size());
        return true;
    }
    void type(const char* keys) {
        EXPECT_EQ(write(master_, keys, std::strlen(keys)), static_cast<ssize_t>(std::strlen(keys)));
    }
    bool hasChanged() const {
        termios now{};
        tcgetattr(master_, &now);
        return now.c_lflag != before_.c_lflag || now.c_cc[VQUIT] != before_.c_cc[VQUIT];
    }
    /// As a shell does with a program that Ctrl-Z has stopped, until "fg".
    void stopAndContinue() {
        kill(process_, SIGSTOP);
        tcsetattr(master_, TCSANOW, &before_);
        kill(process_, SIGCONT);
    }
    int awaitEnd() {
        int status = 0;
        waitpid(process_, &status, 0);
        process_ = -1;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

private:
    int master_ = -1;
    int terminal_ = -1;
    pid_t process_ = -1;
    termios before_{};
    std::string shown_;
};

} // namespace

TEST_F(PictureCommand, TakesKeysAndLeavesTheTerminalAsItWas) {
    const struct {
        const char* last;
        int status;
    } cases[] = {{"q", 0}, {"\x03", 130}};
    for (const auto& test : cases) {
        TerminalRun run({std::string(QUENZA_BIN_DIR) + "/quenza-headless", "picture", SCENE.string(),
                         "--size", "36x24", "--set", "RS_HALT_SPP=-1", "--image", imagePath()});
        ASSERT_TRUE(run.awaitText("Rendering: "));
        EXPECT_TRUE(run.hasChanged());
        run.stopAndContinue();
        while (!run.hasChanged()) {
            ASSERT_TRUE(run.awaitText("Rendering: "));
        }
        run.type("xp");
        ASSERT_TRUE(run.awaitText("Paused: "));
        run.type("u");
        ASSERT_TRUE(run.awaitText("Tonemapping..."));
        run.type("r");
        // Samples have fallen on the image: the number's first digit comes to be 1 again and again.
        ASSERT_TRUE(run.awaitText("Rendering: 1"));
        run.type(test.last);
        ASSERT_TRUE(run.awaitText("Closing render threads..."));
        EXPECT_EQ(run.awaitEnd(), test.status);
        EXPECT_FALSE(run.hasChanged());
        EXPECT_GT(sumOf(image(), RED), 0);
    }
}

#endif

namespace {

class Artist : public Session {
protected:
    void begin() {
        start();
        openFile(SCENE);
        headless::applyRenderSettings(host(), {"RS_HALT_SPP=-1"});
        BaseContainer& size = host().document()->activeRenderData()->data;
        size.SetLong(RDATA_XRES, WIDTH);
        size.SetLong(RDATA_YRES, HEIGHT);
        session_ = std::make_unique<PictureSession>(host(), headless::PictureSettings());
        session_->start();
        // A busy machine shows the status before it has traced anything.
        const int timer = host().loop().addTimer(1ms, [] {});
        await("a sample for each pixel", [&] { return samplesShown() >= 1.0; });
        host().loop().removeTimer(timer);
    }
    ~Artist() override { session_.reset(); }

    PictureSession& session() { return *session_; }
    /// Samples per pixel that the status tells of; 0 when it tells of none.
    double samplesShown() {
        const std::string status = session_->shown().status;
        return status.ends_with(" s/px") ? std::stod(status.substr(status.find(' '))) : 0.0;
    }
    void act(const std::string& action) { session_->act(parsePictureAction(action)); }
    void await(const char* what, const std::function<bool()>& done) {
        ASSERT_TRUE(host().runUntil(done, LIMIT)) << what << ", shown is " << session_->shown().status;
    }
    /// The whole status, once it begins like this.
    std::string awaitStatus(const std::string& start) {
        std::string status;
        // The render's thread sets it without waking the loop.
        const int timer = host().loop().addTimer(1ms, [] {});
        await(start.c_str(), [&] { return (status = session_->shown().status).starts_with(start); });
        host().loop().removeTimer(timer);
        return status;
    }
    /// Asks for an image and gives it.
    Image update() {
        const uint64_t before = session_->changes();
        act("update");
        await("an image", [&] { return session_->changes() > before; });
        Image image;
        session_->copyImage(image);
        return image;
    }

private:
    std::unique_ptr<PictureSession> session_;
};

} // namespace

TEST_F(Artist, PausesLooksAndGoesOn) {
    begin();
    act("pause");
    awaitStatus("Paused: ");
    EXPECT_GT(sumOf(update(), RED), 0) << "an update during a pause shows a picture";
    const std::string paused = awaitStatus("Paused: ");
    const double samples = samplesShown();
    update();
    EXPECT_EQ(awaitStatus("Paused: "), paused) << "no samples during a pause";
    act("resume");
    const int timer = host().loop().addTimer(1ms, [] {});
    await("more samples", [&] { return samplesShown() > samples; });
    host().loop().removeTimer(timer);
    const uint64_t images = session().changes();
    act("stop");
    await("the end", [&] { return !session().isRunning(); });
    EXPECT_EQ(session().failure(), std::nullopt);
    EXPECT_EQ(session().changes(), images + 1) << "a stop gives a last image";
    EXPECT_EQ(host().messages(), std::vector<std::string>{});
}

TEST_F(Artist, TurnsLightLayersOffInARunningRender) {
    begin();
    act("pause");
    const Image both = update();
    act("layer 0 gain=0");
    const Image cool = update();
    act("layer 0 gain=1");
    act("layer 1 off");
    const Image warm = update();
    act("layer 0 color=1,1,0.5");
    const Image yellow = update();
    act("layer 0 off");
    const Image none = update();
    for (const size_t component : {RED, BLUE}) {
        EXPECT_LT(sumOf(cool, component), sumOf(both, component));
        EXPECT_LT(sumOf(warm, component), sumOf(both, component));
        EXPECT_EQ(sumOf(none, component), 0);
    }
    EXPECT_GT(sumOf(warm, RED), 2 * sumOf(warm, BLUE)) << "the warm lamp alone";
    EXPECT_GT(sumOf(cool, BLUE), sumOf(cool, RED)) << "the cool lamp alone";
    EXPECT_LT(sumOf(yellow, BLUE), sumOf(warm, BLUE) / 2);
    EXPECT_GT(sumOf(yellow, RED), sumOf(warm, RED) / 2);
}

TEST_F(Artist, ChangesToneMappingAndWhitePoint) {
    begin();
    act("pause");
    act("tonemap linear scale=1");
    const Image dark = update();
    act("tonemap linear scale=2");
    const Image bright = update();
    EXPECT_GT(sumOf(bright, RED), sumOf(dark, RED));
    act("whitepoint A");
    const Image incandescent = update();
    act("whitepoint 0.28,0.29");
    const Image sky = update();
    EXPECT_GT(sumOf(incandescent, BLUE) * sumOf(sky, RED), sumOf(sky, BLUE) * sumOf(incandescent, RED))
        << "what is white to warm light is blue to daylight";
    const auto refusal = [&](const std::string& action) {
        try {
            act(action);
        } catch (const headless::HostError& error) {
            return std::string(error.what());
        }
        return std::string();
    };
    EXPECT_EQ(refusal("layer 2 off"), "The light layer 2 isn't there");
    EXPECT_EQ(refusal("layer 1 gain=6"), "gain can't be 6: it takes 0 to 5");
    EXPECT_EQ(refusal("whitepoint 0.1,0.3"), "The white point's x can't be 0.1: it takes 0.24 to 0.46");
    EXPECT_EQ(refusal("tonemap camera response=dscs31"),
              "There is no response function \"dscs31\"; is dscs315, dscs315_2 or dscs315_3 meant?");
    EXPECT_EQ(refusal("pause"), "The command \"Pause Rendering\" is disabled");
}
