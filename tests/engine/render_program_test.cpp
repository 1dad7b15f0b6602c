// SPDX-License-Identifier: MIT
#include "engine/images/image_file.h"
#include "engine/program_run.h"
#include "engine/scene_builder.h"
#include "foundation/file_utils.h"
#include "scene/materials/sun_sky_material.h"
#include "support/temp_dir.h"

#include <gtest/gtest.h>

namespace {

using namespace Quenza;

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
    ProgramRun program({"-seed", "5", "-o", path("o.png"), "-qzio", path("q.qzi"), "-uexro", path("u.exr"),
                        "-texro", path("t.exr"), scene});
    EXPECT_EQ(program.exitCode(), 0) << program.text();
    expectImage(path("o.png"));
    expectImage(path("u.exr"));
    expectImage(path("t.exr"));
    EXPECT_TRUE(exists(path("q.qzi")));
    EXPECT_FALSE(exists(path("a.png")));
    EXPECT_NE(program.text().find("4.00 samples per pixel, done\n"), std::string::npos) << program.text();
    const std::string report = unixLines(fileBytes(path("a.report.txt")));
    EXPECT_EQ(report.substr(report.rfind("Result:")), "Result: no faults\n");
}

TEST_F(RenderProgram, PutsTheImageBesideTheSceneAndObeysSettings) {
    const std::string scene = writeScene("a.qzs", -1).toStdString();
    ProgramRun program({"--settings",
                        "<halt_samples_per_pixel>2</halt_samples_per_pixel><width>12</width>"
                        "<save_untonemapped_exr>true</save_untonemapped_exr>",
                        scene});
    EXPECT_EQ(program.exitCode(), 0) << program.text();
    expectImage(path("a.png"), 12);
    expectImage(path("a_untonemapped.exr"), 12);
    EXPECT_FALSE(exists(path("a_tonemapped.exr")));

    const std::string element = "  (In element '", place = "', around line 1, column ";
    const std::string prefix = "Error while parsing '--settings' argument: ";
    const struct {
        const char* settings;
        std::string fault;
    } wrong[] = {
        {"<width>wide</width>",
         prefix + "Failed to parse integer from 'wide'" + element + "width" + place + "66)"},
        {"width=5",
         prefix + "Found unexpected text 'width=5'" + element + "renderer_settings" + place + "47)"},
        {"<width>2000000000</width>", "Argument of '--settings': \"width\" 2000000000 is out of bounds: an "
                                      "image has 1 to 65536 pixels a side"},
    };
    for (const auto& test : wrong) {
        ProgramRun refused({"--settings", test.settings, scene});
        EXPECT_EQ(refused.exitCode(), 1);
        EXPECT_NE(unixLines(fileBytes(path("a.report.txt"))).find("Faults:\n  " + test.fault + "\n"),
                  std::string::npos)
            << refused.text();
        EXPECT_NE(refused.text().find("can't render '" + scene + "': "), std::string::npos) << refused.text();
    }
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
    ProgramRun program({"-o", path("all.png"), "-texro", path("all_t.exr"), path("q.qzq")});
    EXPECT_EQ(program.exitCode(), 1) << "one of its scenes is missing";
    for (const char* const file :
         {"one.frame_1.png", "one.frame_1_tonemapped.exr", "three.png", "three_tonemapped.exr", "b.png"}) {
        expectImage(path(file));
    }
    EXPECT_FALSE(exists(path("two.png")));
    EXPECT_FALSE(exists(path("all.png")));
    EXPECT_NE(program.text().find("3.00 samples per pixel, done\n"), std::string::npos);
    const std::string report = unixLines(fileBytes(path("q.report.txt")));
    for (const std::string& part : {"Queue: " + path("q.qzq") + ", 4 items\n",
                                    std::string("Item: seed 7, halt time -1, halt samples per pixel 3\n"),
                                    path("gone.qzs") + ": ", std::string("\nResult: 1 fault\n")}) {
        EXPECT_NE(report.find(part), std::string::npos) << report;
    }
}

/// Each once, before the render.
TEST_F(RenderProgram, TellsWhatItDoesNotKnow) {
    SceneBuilder described(4, 4);
    Ref<SunSkyMaterial> sky = new SunSkyMaterial;
    sky->model = "captured-simulation";
    described.setBackground(sky);
    described.settings->setDouble("halt_samples_per_pixel", 1);
    const std::string scene = path("a.qzs");
    described.root->writeToXMLFile(scene, false, nullptr);
    const char* const modes[] = {"material_id_tracer",  "depth_pass",
                                 "shadow_pass",         "glass_acceleration",
                                 "watermark",           "render_foreground_alpha",
                                 "info_overlay",        "write_aperture_preview",
                                 "aperture_diffraction"};
    std::string settings;
    for (const std::string mode : modes) {
        settings += "<" + mode + ">true</" + mode + ">";
    }
    ProgramRun program({"-n", "wm", "-p", "7117", "--settings", settings, scene});
    EXPECT_EQ(program.exitCode(), 0) << program.text();
    std::string notes;
    for (size_t at = program.text().find("Note: "); at != std::string::npos;
         at = program.text().find("Note: ", at + 1)) {
        notes += program.text().substr(at, program.text().find('\n', at) + 1 - at);
    }
    EXPECT_EQ(notes,
              "Note: Rendering over a network is not known; this machine renders alone.\n"
              "Note: The mode 'material_id_tracer' is not known; the ordinary image is drawn.\n"
              "Note: The mode 'depth_pass' is not known; the ordinary image is drawn.\n"
              "Note: The mode 'shadow_pass' is not known; the ordinary image is drawn.\n"
              "Note: The alpha of the foreground is not drawn.\n"
              "Note: Glass acceleration is not known; light through glass takes its ordinary time.\n"
              "Note: Diffraction at the aperture is not drawn.\n"
              "Note: No preview of the aperture is written.\n"
              "Note: No watermark is drawn.\n"
              "Note: No text is laid over the image.\n"
              "Note: The sky model 'captured-simulation' is not known; the 'original' one is drawn.\n");
}

TEST_F(RenderProgram, RefusesImagesBeyondAllBounds) {
    const std::string scene = writeScene("a.qzs", 1).toStdString();
    const struct {
        const char *settings, *fault;
    } cases[] = {
        {"<width>2000000000</width>", "The image can't be 2000000000 pixels in width."},
        {"<height>2000000000</height>", "The image can't be 2000000000 pixels in height."},
        {"<width>0</width>", "The image can't be 0 pixels in width."},
        {"<super_sample_factor>2000000000</super_sample_factor>",
         "The image of 24 x 16 pixels with a super sampling factor of 2000000000 and 1 layers can't be held "
         "in "
         "memory."},
        {"<width>65536</width><height>65536</height>",
         "The image of 65536 x 65536 pixels with a super sampling factor of 1 and 1 layers can't be held in "
         "memory."},
    };
    for (const auto& test : cases) {
        ProgramRun program({"--settings", test.settings, scene});
        EXPECT_EQ(program.exitCode(), 1);
        EXPECT_NE(program.text().find(std::string("can't render '") + scene + "': " + test.fault + "\n"),
                  std::string::npos)
            << program.text();
    }
}

TEST_F(RenderProgram, EndsCleanlyWhenInterrupted) {
    const std::string scene = writeScene("a.qzs", 1e9).toStdString();
    ProgramRun program({scene});
    ASSERT_TRUE(program.waitForText(" s left")) << program.text();
    if (!program.interrupt()) {
        GTEST_SKIP() << "there is no console to interrupt a program at";
    }
    EXPECT_EQ(program.exitCode(), 0) << program.text();
    EXPECT_NE(program.text().find(", done\n"), std::string::npos);
    expectImage(path("a.png"));
}

TEST_F(RenderProgram, GoesOnWhenASaveFailsOnTheWay) {
    const std::string scene = writeScene("a.qzs", 1e9).toStdString();
    ProgramRun program({"-o", path("late/folder.png"), scene});
    ASSERT_TRUE(program.waitForText("can't write the image")) << program.text();
    FileUtils::createDir(path("late"));
    if (!program.interrupt()) {
        GTEST_SKIP() << "there is no console to interrupt a program at";
    }
    EXPECT_EQ(program.exitCode(), 0) << program.text();
    expectImage(path("late/folder.png"));
}

TEST_F(RenderProgram, TellsWhatItCannotWriteOrRender) {
    const std::string scene = writeScene("a.qzs", 1).toStdString();
    ProgramRun nowhere({"-o", path("no/such/folder.png"), scene});
    EXPECT_EQ(nowhere.exitCode(), 1);
    EXPECT_NE(nowhere.text().find("can't write the image '" + path("no/such/folder.png") + "': "),
              std::string::npos)
        << nowhere.text();

    FileUtils::writeEntireFile(path("empty.qzs"), std::string("<scene></scene>"));
    ProgramRun empty({path("empty.qzs")});
    EXPECT_EQ(empty.exitCode(), 1);
    EXPECT_NE(empty.text().find("can't render '" + path("empty.qzs") + "': The scene has no camera.\n"),
              std::string::npos)
        << empty.text();
}

} // namespace
