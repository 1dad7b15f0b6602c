// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"

#include "headless/images/image_files.h"
#include "support/run_program.h"

#include <thread>

namespace {

namespace fs = std::filesystem;

/// With one clock and one folder for temporary files they would give their files the same names.
TEST_F(Session, ProgramsThatRenderAtOnceKeepTheirTexturesApart) {
    // Two colours, which are baked: each program has to see its own.
    constexpr const char* DOCUMENT = R"({"format": "quenza-headless-document", "version": 1,
        "materials": [{"id": "a", "name": "Paint", "parameters": {"MATERIAL_COLOR_SHADER": "paint"},
            "shaders": [{"type": "Checkerboard", "id": "paint", "parameters": {
                "CHECKERBOARD_COLOR1": COLOUR, "CHECKERBOARD_COLOR2": COLOUR}}]}],
        "objects": [{"type": "Plane", "name": "Wall", "tags": [{"type": "Texture", "material": "a"}],
                     "parameters": {"PRIM_PLANE_WIDTH": 10000, "PRIM_PLANE_HEIGHT": 10000}},
            {"type": "Light", "name": "Lamp", "position": [0, 300, 0]},
            {"type": "Camera", "id": "camera", "name": "Camera", "position": [0, 200, -400],
             "rotation": [0, -30, 0]}],
        "camera": "camera",
        "renderData": [{"width": 12, "height": 8, "videoPosts": [{"type": 1020896, "parameters": {
            "RS_HALT_SPP": 8}}]}]})";
    constexpr int PROGRAMS = 4;
    std::vector<std::thread> programs;
    Quenza::Outcome runs[PROGRAMS];
    for (int i = 0; i < PROGRAMS; ++i) {
        const std::string name = (folder() / std::to_string(i)).string();
        writeFile(name + ".json", replaceAll(DOCUMENT, "COLOUR", i % 2 == 0 ? "[1, 0, 0]" : "[0, 0, 1]"));
        programs.emplace_back([name, &run = runs[i]] {
            run = Quenza::runProgram(QUENZA_BIN_DIR "/quenza-headless",
                                     {"--fixed-clock", "2026-11-24 09:05:07", "picture", name + ".json",
                                      "--image", name + ".png"});
        });
    }
    for (std::thread& program : programs) {
        program.join();
    }
    for (int i = 0; i < PROGRAMS; ++i) {
        SCOPED_TRACE(runs[i].out + runs[i].errors);
        headless::Image image;
        ASSERT_EQ(headless::readImage(folder() / (std::to_string(i) + ".png"), image), IMAGERESULT_OK);
        int64_t sums[3] = {};
        for (size_t at = 0; at < 12 * 8 * 3; ++at) {
            sums[at % 3] += image.bytes()[at];
        }
        EXPECT_GT(sums[i % 2 == 0 ? 0 : 2], 2 * sums[i % 2 == 0 ? 2 : 0]);
    }
    EXPECT_EQ(listFiles(folder() / "temp"), std::vector<std::string>());
}

} // namespace
