// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"
#include "support/run_program.h"

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#endif

namespace {

namespace fs = std::filesystem;

class RenderCommand : public Session {
protected:
    std::string exportTo(const std::string& name) const {
        return R"("RS_EXPORT_TO_FILE": true, "RS_EXPORT_FILE": {"file": ")" + jsonPath(folder() / name) +
               "\"}";
    }
    /// The message box of a failed export, and its line on the console.
    void expectFailure(const std::string& text, bool onConsole = true) {
        render();
        ASSERT_EQ(host().messages().size(), 1u);
        EXPECT_EQ(host().messages()[0], "Export failed:\n" + text + ".");
        EXPECT_EQ(printed(text), onConsole);
        EXPECT_FALSE(printed("Launching Quenza..."));
    }
    /// An animation's document: the cube moves, the render data asks for frames.
    void openAnimation(const std::string& settings, int from, int to, const std::string& setup = "") {
        openDocument(
            R"({"type": "Cube", "tracks": [{"channel": "position", "keys": [[0, [0, 0, 0]], [10, [100, 0, 0]]]}]})",
            "",
            R"("frames": [0, 10], "renderData": [{"sequence": "manual", "from": )" + std::to_string(from) +
                R"(, "to": )" + std::to_string(to) + setup +
                R"(, "videoPosts": [{"type": 1020896, "parameters": {)" + R"("RS_ANIMATION": true, )" +
                settings + "}}]}]");
    }
};

TEST_F(RenderCommand, WritesSceneAndMeshToTheQuickFolder) {
    openDocument(CUBE);
    newLines();
    ASSERT_TRUE(render());
    const fs::path quick = userFolder() / "quickrender";
    EXPECT_TRUE(fs::exists(quick / "quickrender.qzs"));
    const std::vector<std::string> meshes = listFiles(quick / "quickrender_meshes");
    ASSERT_EQ(meshes.size(), 1u);
    EXPECT_EQ(meshes[0].rfind("mesh_", 0), 0u);
    EXPECT_TRUE(fs::is_directory(quick / "textures.quickrender"));
    EXPECT_TRUE(printed("Starting export..."));
    EXPECT_TRUE(printed("Saved scene to: " + quick.string() + "\\quickrender.qzs"));
    EXPECT_TRUE(printed("Launching Quenza..."));
    EXPECT_TRUE(waitFor(quick / "quickrender.report.txt"));
    EXPECT_NE(readFile(quick / "quickrender.report.txt").find("\nResult: no faults\n"), std::string::npos);
}

TEST_F(RenderCommand, EmptiesTheQuickFolder) {
    fs::create_directories(userFolder() / "quickrender" / "old");
    writeFile(userFolder() / "quickrender" / "old" / "stale.qzs", "stale");
    openDocument(CUBE, exportTo("scene"));
    ASSERT_TRUE(render());
    EXPECT_TRUE(listFiles(userFolder() / "quickrender").empty());
    EXPECT_TRUE(fs::exists(folder() / "scene.qzs"));
}

TEST_F(RenderCommand, TellsWhyAnExportCantBegin) {
    openDocument(CUBE, R"("RS_EXPORT_TO_FILE": true)");
    expectFailure("Export filename is empty or directory does not exist.");
    stop();
    start();
    openDocument(CUBE, exportTo("missing/scene.qzs"));
    expectFailure("Export filename is empty or directory does not exist.");
    stop();
    start();
    openDocument(CUBE, R"("RS_EXPORT_TO_FILE": true, "RS_EXPORT_NEXT_TO_DOC": true)");
    host().document()->path = Filename();
    expectFailure("Document is not saved, cannot obtain document path.");
    stop();
    start();
    writeFile(folder() / "scene.renders", "a file stands where the folder is to be");
    openDocument(CUBE, exportTo("scene.qzs") + R"(, "RS_SET_OUTPUT": true, "RS_OUTPUT_IN_RENDERS": true)");
    expectFailure("Cannot create render directory.");
    stop();
    start();
    fs::remove_all(userFolder());
    fs::create_directories(userFolder());
    writeFile(userFolder() / "quickrender", "a file");
    openDocument(CUBE);
    render();
    const std::string quick = (userFolder() / "quickrender").string();
    EXPECT_EQ(host().messages(),
              std::vector<std::string>{"Export failed:\n\"" + quick + "\" could not be created.."});
    EXPECT_TRUE(printed(quick));
    EXPECT_TRUE(printed("Quickrender dir could not be created."));
}

TEST_F(RenderCommand, WritesOneSceneAFrameAndTheQueue) {
    install(makeRenderer("none", ""));
    openAnimation(
        exportTo("anim") +
            R"(, "RS_HALT_SPP": 16, "RS_SET_OUTPUT": true, "RS_OUTPUT_FILE": {"file": "/out/img.png"})",
        1, 2);
    host().document()->time = BaseTime(5, 30);
    ASSERT_TRUE(render());
    const std::string queue = readFile(folder() / "anim.qzq");
    const auto item = [this](int frame) {
        const std::string stem = "_frame00000" + std::to_string(frame);
        return "    <item>\n        <scene_path>" + (folder() / ("anim" + stem + ".qzs")).string() +
               "</scene_path>\n        <output_path>/out/img" + stem +
               "</output_path>\n        <halt_time>-1.000000</halt_time>\n        "
               "<halt_spp>16.000000</halt_spp>\n"
               "        <seed>SEED</seed>\n    </item>\n";
    };
    std::string masked = queue;
    for (size_t at = masked.find("<seed>"); at != std::string::npos; at = masked.find("<seed>", at + 1)) {
        masked.replace(at + 6, masked.find("</seed>", at) - at - 6, "SEED");
    }
    EXPECT_EQ(masked, "<?xml version=\"1.0\" encoding=\"utf-8\" ?>\n<render_queue>\n" + item(1) + item(2) +
                          "</render_queue>\n");
    EXPECT_FALSE(fs::exists(folder() / "anim.qzs"));
    const std::string first = readFile(folder() / "anim_frame000001.qzs");
    const std::string second = readFile(folder() / "anim_frame000002.qzs");
    EXPECT_NE(first.find("<pos>0.09999999403953552 0 0</pos>"), std::string::npos);
    EXPECT_NE(second.find("<pos>0.19999998807907104 0 0</pos>"), std::string::npos);
    EXPECT_EQ(host().document()->time, BaseTime(5, 30)) << "the document goes back to its time";
}

TEST_F(RenderCommand, HandlesFrameRanges) {
    install(makeRenderer("none", ""));
    openAnimation(exportTo("one"), 3, 3);
    ASSERT_TRUE(render());
    EXPECT_TRUE(fs::exists(folder() / "one.qzs")) << "one frame is no animation";
    EXPECT_FALSE(fs::exists(folder() / "one.qzq"));

    openAnimation(exportTo("none"), 4, 3);
    ASSERT_TRUE(render());
    EXPECT_FALSE(fs::exists(folder() / "none_frame000003.qzs")) << "an end below the start exports nothing";

    openAnimation(exportTo("fast"), 1, 2, R"(, "fps": 60)");
    ASSERT_TRUE(render());
    EXPECT_FALSE(fs::exists(folder() / "fast_frame000001.qzs"));
    EXPECT_TRUE(fs::exists(folder() / "fast_frame000002.qzs")) << "frames 2 to 4 of 60 a second";
    EXPECT_TRUE(fs::exists(folder() / "fast_frame000004.qzs"));
    EXPECT_NE(readFile(folder() / "fast_frame000002.qzs").find("<pos>0.09999999403953552 0 0</pos>"),
              std::string::npos);
}

TEST_F(RenderCommand, CancelsAtTheNextFrame) {
    openAnimation(exportTo("long"), 0, 100000);
    headless::UserAction close;
    close.after = std::chrono::milliseconds(100);
    host().user().addDialogActions({close});
    ASSERT_TRUE(render());
    EXPECT_EQ(host().messages(), std::vector<std::string>{"Export failed:\nExport was cancelled by user."});
    EXPECT_FALSE(fs::exists(folder() / "long.qzq"));
    EXPECT_FALSE(printed("Launching Quenza..."));
    for (const std::string& file : listFiles(folder())) {
        EXPECT_EQ(file.find(".partial"), std::string::npos) << file;
    }
}

/// Two runs of the program on a fixed clock give the same bytes, dates and seeds included.
TEST_F(RenderCommand, GivesTheSameBytesTwice) {
    install(makeRenderer("none", ""));
    start();
    openAnimation(exportTo("same"), 0, 1);
    const std::vector<std::string> words = {"--fixed-clock", "2026-11-24 10:20:30", "render",
                                            (folder() / "document.json").string()};
    std::vector<std::string> bytes[2];
    for (std::vector<std::string>& files : bytes) {
        const Quenza::Outcome run = Quenza::runProgram(QUENZA_BIN_DIR "/quenza-headless", words);
        ASSERT_EQ(run.status, 0) << run.errors;
        for (const char* const name : {"same_frame000000.qzs", "same_frame000001.qzs", "same.qzq"}) {
            files.push_back(readFile(folder() / name));
            fs::remove(folder() / name);
        }
    }
    EXPECT_EQ(bytes[0], bytes[1]);
    EXPECT_NE(bytes[0][0].find("<created_date>10:20:30, 24.11.2026</created_date>"), std::string::npos);
}

#ifndef _WIN32 // where no limit stands for a full disk
/// A disk that is full ends the export with a reason and leaves no file that looks whole.
TEST_F(RenderCommand, TellsOfAFullDisk) {
    openDocument(CUBE, exportTo("full"));
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    rlimit small = before;
    small.rlim_cur = 700;
    setrlimit(RLIMIT_FSIZE, &small);
    render();
    setrlimit(RLIMIT_FSIZE, &before);
    ASSERT_EQ(host().messages().size(), 1u);
    EXPECT_NE(host().messages()[0].find((folder() / "full").string()), std::string::npos)
        << host().messages()[0];
    EXPECT_FALSE(fs::exists(folder() / "full.qzs"));
    EXPECT_FALSE(printed("Launching Quenza..."));
}
#endif

} // namespace
