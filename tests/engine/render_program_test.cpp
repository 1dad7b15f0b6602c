// SPDX-License-Identifier: MIT
#include "engine/image_file.h"
#include "engine/scene_builder.h"
#include "foundation/file_utils.h"
#include "support/temp_dir.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace Quenza;

/// The console renderer, started on arguments; what it prints is read from a pipe.
class Program {
public:
    explicit Program(const std::vector<std::string>& arguments) {
        int ends[2];
        EXPECT_EQ(pipe(ends), 0);
        std::vector<std::string> line = arguments;
        line.insert(line.begin(), QUENZA_RENDERER_DIR "/quenza_console.exe");
        std::vector<char*> pointers;
        for (std::string& argument : line) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        id_ = fork();
        if (id_ == 0) {
            dup2(ends[1], STDOUT_FILENO);
            dup2(ends[1], STDERR_FILENO);
            close(ends[0]);
            execv(pointers[0], pointers.data());
            _exit(127);
        }
        close(ends[1]);
        output_ = fdopen(ends[0], "r");
    }
    ~Program() { std::fclose(output_); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// False when the program ended without printing it.
    bool waitForText(const std::string& wanted) {
        char line[4096];
        while (std::fgets(line, sizeof line, output_)) {
            text_ += line;
            if (std::string(line).find(wanted) != std::string::npos) {
                return true;
            }
        }
        return false;
    }
    void interrupt() const { kill(id_, SIGINT); }
    int exitCode() {
        waitForText("\n\n\n never printed");
        int status = 0;
        while (waitpid(id_, &status, 0) < 0 && errno == EINTR) {
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    const std::string& text() const { return text_; }

private:
    pid_t id_ = -1;
    std::FILE* output_ = nullptr;
    std::string text_;
};

class RenderProgram : public ::testing::Test {
protected:
    /// A grey ball under a white sky, 24 x 16 pixels.
    String writeScene(const std::string& name, double halt_samples) const {
        SceneBuilder scene(24, 16);
        scene.setUniformBackground(1);
        scene.addSphere({0, 4, 0}, 1, scene.diffuse(0.5));
        scene.settings->setDouble("halt_samples_per_pixel", halt_samples);
        const String path = folder_ / name;
        scene.root->writeToXMLFile(path, false, nullptr);
        return path;
    }
    std::string path(const std::string& name) const { return (folder_ / name).toStdString(); }

    static void expectImage(const std::string& file, u32 width = 24) {
        std::string fault;
        const auto image = engine::loadImage(file, fault);
        ASSERT_TRUE(image) << file << ": " << fault;
        EXPECT_EQ(image->width, width);
    }

    TempDir folder_;
};

TEST_F(RenderProgram, WritesTheFilesThatItsLineNames) {
    const std::string scene = writeScene("a.qzs", 4).toStdString();
    Program program({"-seed", "5", "-o", path("o.png"), "-qzio", path("q.qzi"), "-uexro", path("u.exr"),
                     "-texro", path("t.exr"), scene});
    EXPECT_EQ(program.exitCode(), 0) << program.text();
    expectImage(path("o.png"));
    expectImage(path("u.exr"));
    expectImage(path("t.exr"));
    EXPECT_TRUE(exists(path("q.qzi")));
    EXPECT_FALSE(exists(path("a.png")));
    EXPECT_NE(program.text().find("4.00 samples per pixel, done\n"), std::string::npos) << program.text();
    const std::string report = fileBytes(path("a.report.txt"));
    EXPECT_EQ(report.substr(report.rfind("Result:")), "Result: no faults\n");
}

TEST_F(RenderProgram, PutsTheImageBesideTheSceneAndObeysSettings) {
    const std::string scene = writeScene("a.qzs", -1).toStdString();
    Program program({"--settings",
                     "<halt_samples_per_pixel>2</halt_samples_per_pixel><width>12</width>"
                     "<save_untonemapped_exr>true</save_untonemapped_exr>",
                     scene});
    EXPECT_EQ(program.exitCode(), 0) << program.text();
    expectImage(path("a.png"), 12);
    expectImage(path("a_untonemapped.exr"), 12);
    EXPECT_FALSE(exists(path("a_tonemapped.exr")));

    Program wrong({"--settings", "<width>wide</width>", scene});
    EXPECT_EQ(wrong.exitCode(), 1);
    EXPECT_NE(wrong.text().find("Error while parsing '--settings' argument: "), std::string::npos)
        << wrong.text();
}

TEST_F(RenderProgram, RendersEveryItemOfAQueue) {
    writeScene("a.qzs", -1);
    writeScene("b.qzs", -1);
    const auto item = [this](const std::string& scene, const std::string& output) {
        return "<item><scene_path>" + path(scene) + "</scene_path>" +
               (output.empty() ? "" : "<output_path>" + path(output) + "</output_path>") +
               "<halt_time>-1.000000</halt_time><halt_spp>3.000000</halt_spp><seed>7</seed></item>";
    };
    FileUtils::writeEntireFile(path("q.qzq"), "<render_queue>" + item("a.qzs", "one.frame_1") +
                                                  item("gone.qzs", "two") + item("b.qzs", "three") +
                                                  item("b.qzs", "") + "</render_queue>");
    Program program({"-o", path("all.png"), "-texro", path("all_t.exr"), path("q.qzq")});
    EXPECT_EQ(program.exitCode(), 1) << "one of its scenes is missing";
    for (const char* const file :
         {"one.frame_1.png", "one.frame_1_tonemapped.exr", "three.png", "three_tonemapped.exr", "b.png"}) {
        expectImage(path(file));
    }
    EXPECT_FALSE(exists(path("two.png")));
    EXPECT_FALSE(exists(path("all.png")));
    EXPECT_NE(program.text().find("3.00 samples per pixel, done\n"), std::string::npos);
}

TEST_F(RenderProgram, EndsCleanlyWhenInterrupted) {
    const std::string scene = writeScene("a.qzs", 1e9).toStdString();
    Program program({scene});
    ASSERT_TRUE(program.waitForText(" s left")) << program.text();
    program.interrupt();
    EXPECT_EQ(program.exitCode(), 0) << program.text();
    EXPECT_NE(program.text().find(", done\n"), std::string::npos);
    expectImage(path("a.png"));
}

TEST_F(RenderProgram, TellsWhatItCannotWriteOrRender) {
    const std::string scene = writeScene("a.qzs", 1).toStdString();
    Program nowhere({"-o", path("no/such/folder.png"), scene});
    EXPECT_EQ(nowhere.exitCode(), 1);
    EXPECT_NE(nowhere.text().find("can't write the image '" + path("no/such/folder.png") + "': "),
              std::string::npos)
        << nowhere.text();

    FileUtils::writeEntireFile(path("empty.qzs"), std::string("<scene></scene>"));
    Program empty({path("empty.qzs")});
    EXPECT_EQ(empty.exitCode(), 1);
    EXPECT_NE(empty.text().find("can't render '" + path("empty.qzs") + "': The scene has no camera.\n"),
              std::string::npos)
        << empty.text();
}

} // namespace
