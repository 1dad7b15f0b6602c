// SPDX-License-Identifier: MIT
#include "end_to_end/programs.h"
#include "engine/scene_loader.h"
#include "engine/session.h"

#include <cstdlib>

namespace {

namespace fs = std::filesystem;

class MaterialsExample : public Programs {};

/// A material of each kind, with each of its channels as a constant, a texture, a program and a baked shader.
TEST_F(MaterialsExample, ExportsEveryKindWithEveryChannelInEveryForm) {
    const fs::path source = QUENZA_SOURCE_DIR;
    const fs::path scene = exportDocument((source / "examples" / "materials.json").string());
    ASSERT_FALSE(scene.empty()) << errors;
    EXPECT_EQ(errors, "");
    const fs::path golden = source / "tests/end_to_end/golden/materials.txt";
    const std::string outline = replaceAll(materialOutline(scene, folder()),
                                           fs::absolute(source / "examples").generic_string(), "EXAMPLES");
    if (std::getenv("QUENZA_WRITE_GOLDEN")) {
        writeFile(golden, outline);
    }
    EXPECT_EQ(outline, readFile(golden));

    // The programs among them are what the renderer takes.
    const engine::RenderSession session(engine::loadScene(scene.string(), "", ""),
                                        scene.parent_path().string(), engine::SessionOptions());
    for (const std::string& notice : session.scene().notices().texts()) {
        EXPECT_EQ(notice.find("doesn't compile"), std::string::npos) << notice;
    }
}

} // namespace
