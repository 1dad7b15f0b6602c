// SPDX-License-Identifier: MIT
#include "reading/scene_fixture.h"

namespace Quenza {

namespace {

namespace fs = std::filesystem;

class RoundTrip : public SceneFiles {};

/// Kept scenes, without their mesh files: what a reader makes of them is written as it was.
TEST_F(RoundTrip, KeptScenes) {
    int count = 0;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(fs::path(QUENZA_SOURCE_DIR) / "tests/end_to_end/golden")) {
        if (entry.path().extension() != ".qzs")
            continue;
        ++count;
        SCOPED_TRACE(entry.path());
        Ref<SceneNodeRoot> root;
        QuenzaModelParser().parseScene(root, entry.path().string(), {}, "");
        bind(*root);
        root->checkValidity();
        const String written = folder / entry.path().filename().string();
        root->writeToXMLFile(written, false, nullptr);
        EXPECT_EQ(fileBytes(written), fileBytes(entry.path().string()));
    }
    EXPECT_GE(count, 2);
}

} // namespace

} // namespace Quenza
