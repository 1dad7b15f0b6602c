// SPDX-License-Identifier: MIT
#include "end_to_end/programs.h"
#include "reading/scene_parser.h"

namespace {

namespace fs = std::filesystem;

class RoundTrip : public Programs {
protected:
    static void readAndWrite(const fs::path& from, const fs::path& to) {
        Quenza::Ref<Quenza::SceneNodeRoot> root;
        Quenza::QuenzaModelParser().parseScene(root, from.string(), {}, "");
        root->finalise(from.string());
        root->checkValidity();
        fs::create_directories(to.parent_path());
        root->writeToXMLFile(to.string(), false, nullptr);
    }
};

/// Scenes and mesh files of all examples, read and written into another folder, are the same bytes, and the
/// tool finds nothing wrong with them.
TEST_F(RoundTrip, AllExamples) {
    install(makeRenderer("none", ""));
    int count = 0;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(fs::path(QUENZA_SOURCE_DIR) / "examples")) {
        if (entry.path().extension() != ".json")
            continue;
        const std::string name = entry.path().stem().string();
#ifdef _WIN32 // where the host reads no models
        if (name == "real-model")
            continue;
#endif
        ++count;
        SCOPED_TRACE(name);
        const fs::path exported = folder() / "exported" / name;
        const fs::path written = folder() / "written" / name;
        ASSERT_EQ(headless("render '" + entry.path().string() + "' --to '" +
                           (exported / "scene.qzs").string() + "'"),
                  0)
            << errors;
        int scenes = 0; // one a frame
        for (const std::string& file : listFiles(exported)) {
            if (fs::path(file).extension() == ".qzs") {
                ++scenes;
                const std::string scene = (exported / file).string();
                EXPECT_EQ(sceneTool("check '" + scene + "'"), 0);
                EXPECT_EQ(out, scene + ": no faults\n");
                readAndWrite(scene, written / file);
            }
        }
        EXPECT_GT(scenes, 0);
        for (const std::string& file : listFiles(exported)) {
            const fs::path extension = fs::path(file).extension();
            if (extension == ".qzs" || extension == ".qzmesh") {
                EXPECT_TRUE(readFile(written / file) == readFile(exported / file)) << file;
            }
        }
    }
    EXPECT_GE(count, 5);
}

} // namespace
