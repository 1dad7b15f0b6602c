// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"
#include "reading/scene_parser.h"

#include <cstdlib>

namespace {

namespace fs = std::filesystem;

class RoundTrip : public Session {
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

/// Scenes and mesh files of all examples, read and written into another folder, are the same bytes.
TEST_F(RoundTrip, AllExamples) {
    install(makeRenderer("none", ""));
    int count = 0;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(fs::path(QUENZA_SOURCE_DIR) / "examples")) {
        if (entry.path().extension() != ".json")
            continue;
        ++count;
        const std::string name = entry.path().stem().string();
        SCOPED_TRACE(name);
        const fs::path exported = folder() / "exported" / name;
        const fs::path written = folder() / "written" / name;
        fs::create_directories(exported);
        const std::string run = std::string(QUENZA_BIN_DIR) + "/quenza-headless render '" +
                                entry.path().string() + "' --to '" + (exported / "scene.qzs").string() +
                                "' > '" + (folder() / "log").string() + "' 2>&1";
        ASSERT_EQ(std::system(run.c_str()), 0) << readFile(folder() / "log");

        int scenes = 0; // one a frame
        for (const std::string& file : listFiles(exported)) {
            if (fs::path(file).extension() == ".qzs") {
                ++scenes;
                readAndWrite(exported / file, written / file);
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
