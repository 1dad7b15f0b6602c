// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"

#include <cstdlib>

namespace {

namespace fs = std::filesystem;

class ExportedExamples : public Session {
protected:
    /// Runs a program of this build; what it prints goes to "log".
    bool succeeds(const std::string& command) const {
        const std::string run =
            std::string(QUENZA_BIN_DIR) + "/" + command + " > '" + (folder() / "log").string() + "' 2>&1";
        return std::system(run.c_str()) == 0;
    }
    std::string log() const { return readFile(folder() / "log"); }
};

/// The tool finds nothing wrong with what is exported, and writes it anew to the same bytes.
TEST_F(ExportedExamples, PassCheckSlow) {
    install(makeRenderer("none", ""));
    int scenes = 0;
    for (const fs::directory_entry& entry :
         fs::directory_iterator(fs::path(QUENZA_SOURCE_DIR) / "examples")) {
        if (entry.path().extension() != ".json")
            continue;
        const fs::path exported = folder() / entry.path().stem();
        fs::create_directories(exported);
        ASSERT_TRUE(succeeds("quenza-headless render '" + entry.path().string() + "' --to '" +
                             (exported / "scene.qzs").string() + "'"))
            << log();
        for (const std::string& file : listFiles(exported)) {
            if (fs::path(file).extension() != ".qzs")
                continue;
            ++scenes;
            const std::string scene = (exported / file).string();
            EXPECT_TRUE(succeeds("quenza-scene check '" + scene + "'")) << log();
            EXPECT_EQ(log(), scene + ": no faults\n");
            EXPECT_TRUE(succeeds("quenza-scene convert '" + scene + "' '" + scene + ".again.qzs'")) << log();
            EXPECT_EQ(readFile(scene + ".again.qzs"), readFile(scene));
        }
    }
    EXPECT_GE(scenes, 5);
}

} // namespace
