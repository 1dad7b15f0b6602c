// SPDX-License-Identifier: MIT
// The renderer is a shell script here.
#ifndef _WIN32

#include "end_to_end/session.h"

namespace {

namespace fs = std::filesystem;

class Launch : public Session {
protected:
    /// A renderer that writes its name and arguments, one a line, to a file.
    void installRecorder() {
        install(makeRenderer("recorder", "{ echo \"$0\"; printf '%s\\n' \"$@\"; } > \"" +
                                             argumentsFile().string() + ".part\"\nmv \"" +
                                             argumentsFile().string() + ".part\" \"" +
                                             argumentsFile().string() + "\"\n"));
    }
    fs::path argumentsFile() const { return folder() / "arguments"; }

    /// The arguments behind the seed that "Render with Quenza" gives.
    std::string argumentsOfRender() {
        EXPECT_TRUE(render());
        EXPECT_TRUE(host().messages().empty());
        const std::string arguments = launchedArguments();
        const size_t seed = arguments.find("\n-seed\n");
        return seed == std::string::npos ? arguments : arguments.substr(arguments.find('\n', seed + 7) + 1);
    }

    std::string launchedArguments() {
        EXPECT_TRUE(waitFor(argumentsFile())) << "the renderer was never started";
        const std::string text = readFile(argumentsFile());
        fs::remove(argumentsFile());
        return text;
    }
};

TEST_F(Launch, PassesTheSwitchesInTheirOrder) {
    installRecorder();
    const std::string dir = (folder() / "with blank").string();
    fs::create_directory(dir);
    const std::string toFile =
        R"("RS_EXPORT_TO_FILE": true, "RS_EXPORT_FILE": {"file": ")" + dir + R"(/sc\u00e4ne.any"})";
    const std::string scene = dir + "/sc\xC3\xA4ne.qzs\n";
    const std::string quick = (userFolder() / "quickrender" / "quickrender.qzs").string() + "\n";
    const std::string low = "--thread_priority\nbelownormal\n";
    const struct {
        std::string settings;
        std::string expected;
    } cases[] = {
        {"", low + quick},
        {R"("RS_LOW_PRIORITY": false)", quick},
        {toFile, low + scene},
        {toFile + R"(, "RS_LOW_PRIORITY": false, "RS_NETWORK": true)", "-n\nwm\n-p\n7100\n" + scene},
        {toFile + R"(, "RS_NETWORK": true, "RS_NETWORK_PORT": 81)", low + "-n\nwm\n-p\n81\n" + scene},
        {toFile + R"(, "RS_SET_OUTPUT": true, "RS_OUTPUT_FILE": {"file": "/out/a b.jpg"})",
         low +
             "-o\n/out/a b.png\n-qzio\n/out/a b.qzi\n-uexro\n/out/a b_untonemapped.exr\n"
             "-texro\n/out/a b_tonemapped.exr\n" +
             scene},
        {toFile + R"(, "RS_SET_OUTPUT": true, "RS_OUTPUT_IN_RENDERS": true)",
         low +
             replaceAll("-o\nSTEM.png\n-qzio\nSTEM.qzi\n-uexro\nSTEM_untonemapped.exr\n-texro\nSTEM_"
                        "tonemapped.exr\n",
                        "STEM", dir + "/sc\xC3\xA4ne.renders/sc\xC3\xA4ne") +
             scene},
    };
    for (const auto& test : cases) {
        openDocument(CUBE, test.settings.empty() ? "" : test.settings);
        EXPECT_EQ(argumentsOfRender(), test.expected) << test.settings;
    }
    EXPECT_TRUE(fs::is_directory(dir + "/sc\xC3\xA4ne.renders"));
}

TEST_F(Launch, RefusesPathsThatItsLineCannotQuote) {
    installRecorder();
    const std::string dir = folder().string();
    openDocument(CUBE, R"("RS_EXPORT_TO_FILE": true, "RS_EXPORT_FILE": {"file": ")" + dir + R"(/a\"b.qzs"})");
    ASSERT_TRUE(render());
    EXPECT_TRUE(
        printed("The renderer can't be started: the path \"" + dir + "/a\"b.qzs\" holds a quotation mark."));
    EXPECT_FALSE(fs::exists(argumentsFile()));
}

TEST_F(Launch, HasAPortForDocumentsThatHoldNone) {
    installRecorder();
    openDocument(CUBE, R"("RS_NETWORK": true, "RS_LOW_PRIORITY": false)");
    headless::VideoPost* const settings = host().document()->activeRenderData()->videoPosts().first();
    settings->data.RemoveData(1403);
    EXPECT_EQ(argumentsOfRender(),
              "-n\nwm\n-p\n7777\n" + (userFolder() / "quickrender" / "quickrender.qzs").string() + "\n");
}

TEST_F(Launch, StartsTheConsoleProgram) {
    installRecorder();
    openDocument(CUBE, R"("RS_CONSOLE": true)");
    ASSERT_TRUE(render());
    EXPECT_NE(launchedArguments().find("quenza_console.exe\n"), std::string::npos);
}

TEST_F(Launch, LeavesTheRendererToItself) {
    // It works until it's told to end, which is after the host is gone: a host that waited for it would hang.
    install(makeRenderer(
        "slow", "cd \"" + folder().string() +
                    "\"\nfor i in $(seq 1000); do [ -e go ] && touch done && exit; sleep 0.02; done\n"));
    openDocument(CUBE);
    ASSERT_TRUE(render());
    stop();
    EXPECT_FALSE(fs::exists(folder() / "done"));
    writeFile(folder() / "go", "");
    EXPECT_TRUE(waitFor(folder() / "done")) << "it outlives the host";
}

TEST_F(Launch, SurvivesRenderersThatCrashOrDontStart) {
    install(makeRenderer("crashing", "kill -SEGV $$\n"));
    openDocument(CUBE);
    EXPECT_TRUE(render());
    EXPECT_TRUE(host().messages().empty());

    const fs::path broken = makeRenderer("broken", "");
    writeFile(broken / "quenza.exe", "no program at all");
    fs::permissions(broken / "quenza.exe", fs::perms::owner_read);
    install(broken);
    EXPECT_TRUE(render());
    EXPECT_TRUE(host().messages().empty());
    EXPECT_TRUE(fs::exists(userFolder() / "quickrender" / "quickrender.qzs")) << "the scene stays";
}

TEST_F(Launch, AsksForTheRendererOnceAndRemembers) {
    installRecorder();
    const fs::path renderer = folder() / "recorder";
    install(folder() / "nowhere");
    fs::create_directory(folder() / "empty");
    openDocument(CUBE);
    EXPECT_FALSE(render()) << "without an answer the selector cancels";
    EXPECT_FALSE(fs::exists(userFolder() / "cquenzaSettings.cfg"));

    host().user().addFileAnswer((folder() / "empty").string());
    host().user().addFileAnswer(renderer.string());
    fs::create_directories(userFolder());
    writeFile(
        userFolder() / "cquenzaSettings.cfg",
        "<other a=\"1\" />\n<global_settings>\n    <PATH>/gone</PATH>\n</global_settings>\n<!-- mine -->\n");
    EXPECT_TRUE(render());
    const auto& asked = host().user().interactions();
    ASSERT_EQ(asked.size(), 3u);
    EXPECT_EQ(asked[1].text, "Please choose the Quenza directory.");
    EXPECT_EQ(readFile(userFolder() / "cquenzaSettings.cfg"),
              "<other a=\"1\" />\n<!-- mine -->\n<global_settings>\n    <PATH>" + renderer.string() +
                  "</PATH>\n</global_settings>\n");
    launchedArguments();

    EXPECT_TRUE(render()) << "found by the settings file";
    EXPECT_EQ(host().user().interactions().size(), 3u);
    launchedArguments();
}

/// The realtime edition's folder serves when the full renderer has none, or holds no program.
TEST_F(Launch, ReadsBothEditionsFromTheRegistry) {
    installRecorder();
    install(folder() / "recorder", "Quenza RT");
    openDocument(CUBE);
    EXPECT_TRUE(render());
    launchedArguments();
}

} // namespace

#endif
