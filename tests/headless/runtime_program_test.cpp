// SPDX-License-Identifier: MIT
#include "headless/app/program.h"
#include "headless/runtime_fixture.h"
#include "support/temp_dir.h"
#include "support/user_profile.h"

#include <csignal>

namespace headless {
namespace {

namespace fs = std::filesystem;

/// The whole program in this process, with folders of its own and a renderer that does nothing.
class Program : public RuntimeTest {
protected:
    Program() {
        fs::create_directories(root() / "renderer");
        for (const char* const name : {"renderer/quenza.exe", "renderer/quenza_console.exe"}) {
#ifdef _WIN32 // which starts no scripts
            fs::copy_file(QUENZA_BIN_DIR "/child_program.exe", root() / name);
#else
            Quenza::writeBytes(temp_ / name, "#!/bin/sh\n");
            fs::permissions(root() / name, fs::perms::owner_all);
#endif
        }
        profile_.install(root() / "renderer");
        Quenza::writeBytes(temp_ / "cube.json", R"({"format": "quenza-headless-document", "version": 1,
            "objects": [{"type": "Cube", "name": "Cube"}]})");
        Quenza::writeBytes(temp_ / "empty.json", R"({"format": "quenza-headless-document", "version": 1})");
    }

    fs::path root() const {
        return temp_.path().toStdString();
    }
    std::string path(const std::string& name) const {
        return (root() / name).make_preferred().string();
    }

    int run(const Lines& words) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int status = runProgram(words);
        out_ = testing::internal::GetCapturedStdout();
        errors_ = testing::internal::GetCapturedStderr();
        return status;
    }
    /// The command `render` with the plug-in of this build.
    int render(const std::string& document, Lines more) {
        Lines words = {"--plugin", Quenza::PLUGIN_PATH, "--fixed-clock", "2026-11-24 09:05:07",
                       "render",   path(document)};
        words.insert(words.end(), more.begin(), more.end());
        return run(words);
    }
    std::string lastLine() const {
        const size_t before = out_.size() < 2 ? std::string::npos : out_.rfind('\n', out_.size() - 2);
        return out_.substr(before == std::string::npos ? 0 : before + 1);
    }

    const Quenza::TempDir temp_;
    const Quenza::UserProfile profile_{root() / "config"};
    std::string out_;
    std::string errors_;
};

TEST_F(Program, ListsWhatWasRegistered) {
    ASSERT_EQ(run({"--plugin", testPlugin("not_starting").string(), "list", "plugins"}), 1);
    EXPECT_EQ(out_, "#  KIND     ID       NAME     DESCRIPTION OR HELP  ICON  INFO  PRIORITY\n"
                    "1  command  9000001  Nothing                             0x0\n");
    ASSERT_EQ(run({"--plugin", testPlugin("working").string(), "list", "descriptions"}), 0);
    EXPECT_NE(out_.find("TTest (tag 9000010, \"Test Tag\")\n"), std::string::npos) << out_;
    for (const char* const row :
         {"\n1001  TEST_AMOUNT    REAL  0.5             yes    no       Amount\n",
          "\n1002  TEST_SECRET    LONG  7               no     yes      Secret\n",
          "\n1003  TEST_SWITCH    BOOL  true            yes    yes      Switch\n",
          "\n  1     TEST_MODE_B                                          Second\n"}) {
        EXPECT_NE(out_.find(row), std::string::npos) << row;
    }
}

TEST_F(Program, EndsWithTheStatusOfWhatHappened) {
    const std::string working = testPlugin("working").string();
    const struct {
        Lines words;
        int status;
        std::string reason;
    } cases[] = {
        {{"--help"}, 0, ""},
        {{"render", "--help"}, 0, ""},
        {{}, 2, "quenza-headless: A command is missing\nTry \"quenza-headless --help\".\n"},
        {{"--fixed-clock", "noon", "list", "plugins"},
         2,
         "quenza-headless: --fixed-clock takes a date \"YYYY-MM-DD hh:mm:ss\", not \"noon\"\n"
         "Try \"quenza-headless --help\".\n"},
        {{"--plugin", path("nowhere.so"), "list", "plugins"},
         1,
         "quenza-headless: There is no plug-in " + path("nowhere.so") + "\n"},
        {{"--plugin", working, "render", path("cube.json")},
         1,
         "quenza-headless: There is no command 1023920 in " + working + "\n"},
        {{"--plugin", working, "open", path("gone.json"), "--save", path("x.json")},
         1,
         "quenza-headless: " + path("gone.json") + ": the file can't be opened for reading\n"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(run(test.words), test.status);
        EXPECT_EQ(errors_, test.reason);
    }
}

TEST_F(Program, RendersToAFileAndToTheQuickFolder) {
    ASSERT_EQ(render("cube.json", {"--to", path("scene"), "--set", "RS_MERGE_VERTICES=false"}), 0) << errors_;
    EXPECT_EQ(lastLine(), "Scene: " + path("scene.qzs") + "\n");
    EXPECT_EQ(errors_, "");
    const std::string scene = Quenza::fileBytes(path("scene.qzs"));
    EXPECT_NE(
        scene.find("<merge_vertices_with_same_pos_and_normal>true</merge_vertices_with_same_pos_and_normal>"),
        std::string::npos);
    EXPECT_NE(scene.find("9:5:7, 24.11.2026"), std::string::npos);

    ASSERT_EQ(render("cube.json", {}), 0) << errors_;
    const std::string quick = path("config/Quenza for Cinema 4D/quickrender/quickrender.qzs");
    EXPECT_EQ(lastLine(), "Scene: " + quick + "\n");
    EXPECT_TRUE(fs::exists(quick));

    ASSERT_EQ(render("cube.json", {"--to", path("anim.qzs"), "--frames", "4-5"}), 0) << errors_;
    EXPECT_NE(out_.find("\nScenes: 2, from " + path("anim_frame000004.qzs") + " to " +
                        path("anim_frame000005.qzs") + "\nQueue: " + path("anim.qzq") + "\n"),
              std::string::npos)
        << out_;
}

TEST_F(Program, TellsWhyARenderFailed) {
    EXPECT_EQ(render("empty.json", {"--to", path("scene.qzs")}), 1);
    EXPECT_EQ(errors_,
              "quenza-headless: The plug-in wrote no scene: the document has no object, or no frame to "
              "export\n");
    EXPECT_EQ(render("cube.json", {"--to", path("cube.json/scene.qzs")}), 1);
    EXPECT_EQ(errors_,
              "quenza-headless: The folder " + path("cube.json") + " can't be made: Not a directory\n");
    EXPECT_EQ(render("cube.json", {"--to", path("new/folder/scene.qzs")}), 0) << errors_;
    EXPECT_TRUE(fs::exists(path("new/folder/scene.qzs")));
    EXPECT_EQ(render("cube.json", {"--set", "RS_EXPORT_TO_FILE=true"}), 1);
    EXPECT_NE(errors_.find("\nquenza-headless: Export failed: Export filename is empty or directory does not "
                           "exist.\n"),
              std::string::npos)
        << errors_;
    EXPECT_EQ(render("cube.json", {"--set", "RS_HALTSPP=1"}), 2);
    EXPECT_NE(errors_.find("is RS_HALT_SPP meant?"), std::string::npos);

    profile_.install("");
    EXPECT_EQ(render("cube.json", {"--to", path("made/for/scene.qzs")}), 1);
    EXPECT_FALSE(fs::exists(path("made")));
#ifdef _WIN32
    const std::string keys = "HKEY_CURRENT_USER\\Software\\Tessaly Works\\Quenza Renderer (not set), "
                             "HKEY_CURRENT_USER\\Software\\Tessaly Works\\Quenza RT (not set), ";
#else
    const std::string keys = "[Software\\Tessaly Works\\Quenza Renderer] (not set), "
                             "[Software\\Tessaly Works\\Quenza RT] (not set) in " +
                             path("config/registry.ini") + ", ";
#endif
    EXPECT_EQ(errors_,
              "[file selection] Please choose the Quenza directory. (cancelled)\n"
              "quenza-headless: The export did not begin: the plug-in found no renderer and asked \"Please "
              "choose the Quenza directory.\" It was looked for by InstallDirectory of " +
                  keys + "and by " + path("config/Quenza for Cinema 4D/cquenzaSettings.cfg") +
                  ". Answer with --answer-file FOLDER, or install the renderer\n");
    EXPECT_EQ(render("cube.json", {"--answer-file", path("renderer"), "--set", "RS_CONSOLE=true"}), 0)
        << errors_;
}

TEST_F(Program, CancelsByTheCloseButtonAndByCtrlC) {
    const Lines endless = {"--to", path("long.qzs"), "--frames", "0-1000000"};
    Lines closed = endless;
    closed.insert(closed.end(), {"--cancel-after", "0.02"});
    EXPECT_EQ(render("cube.json", closed), 1);
    EXPECT_NE(errors_.find("quenza-headless: Export failed: Export was cancelled by user.\n"),
              std::string::npos);

#ifndef _WIN32 // where Ctrl-C goes to all programs of a console
    fs::remove(path("long_frame000000.qzs"));
    // Ctrl-C counts from the moment that the plug-in has started; before that the signal would end this test.
    std::thread user([&] {
        while (!fs::exists(path("long_frame000000.qzs"))) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        std::raise(SIGINT);
    });
    EXPECT_EQ(render("cube.json", endless), 130);
    user.join();
#endif
    EXPECT_FALSE(fs::exists(path("long.qzq")));
}

} // namespace
} // namespace headless
