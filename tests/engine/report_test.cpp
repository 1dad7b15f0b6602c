// SPDX-License-Identifier: MIT
#include "engine/report.h"

#include "support/temp_dir.h"

#include <gtest/gtest.h>

namespace {

using namespace Quenza;

TEST(Report, GoesThroughEveryItemOfAQueue) {
    const TempDir folder;
    const std::string scene = (folder / "scene.qzs").toStdString();
    writeBytes(scene, "<scene></scene>");
    const std::string queue = (folder / "anim.qzq").toStdString();
    writeBytes(queue, "<render_queue><item><scene_path>" + scene +
                          "</scene_path><halt_time>-1.000000</halt_time><halt_spp>16.000000</halt_spp>"
                          "<seed>7</seed></item><item><scene_path>/gone.qzs</scene_path></item>"
                          "</render_queue>");
    engine::Options options;
    options.input = queue;
    options.switches = {{"-seed", "3"}};
    const engine::Report report = engine::makeReport(options);
    EXPECT_NE(report.text.find("  -seed 3\n"), std::string::npos);
    EXPECT_NE(report.text.find("Queue: " + queue + ", 2 items\n"), std::string::npos);
    EXPECT_NE(report.text.find("Item: seed 7, halt time -1, halt samples per pixel 16\n"), std::string::npos);
    ASSERT_EQ(report.faults.size(), 1u);
    EXPECT_EQ(report.faults[0].rfind("/gone.qzs: ", 0), 0u);
    EXPECT_NE(report.text.find("\nResult: 1 fault\n"), std::string::npos);
    EXPECT_EQ(engine::reportPath(queue), (folder / "anim.report.txt").toStdString());
}

} // namespace
