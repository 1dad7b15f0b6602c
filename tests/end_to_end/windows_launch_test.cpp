// SPDX-License-Identifier: MIT
// What the renderer gets of Windows: its line, to the letter.
#ifdef _WIN32

#include "end_to_end/session.h"
#include "support/temp_dir.h"

namespace {

namespace fs = std::filesystem;

class WindowsLaunch : public Session {
protected:
    /// A folder whose name has a blank and letters that no one code page has all of.
    fs::path exportFolder() const {
        fs::path path = folder() / std::u8string(u8"out \u00e4 \u6f22");
        fs::create_directory(path);
        return path;
    }
    static std::string utf8(const fs::path& path) {
        const std::u8string text = path.u8string();
        return std::string(text.begin(), text.end());
    }
    std::string exportTo(const fs::path& scene) const {
        return R"("RS_EXPORT_TO_FILE": true, "RS_EXPORT_FILE": {"file": ")" +
               replaceAll(utf8(scene), "\\", "\\\\") + "\"}";
    }
    /// The command "Render with Quenza", which tells nothing.
    void renderDocument(const std::string& settings) {
        openDocument(
            CUBE, "",
            R"("renderData": [{"width": 12, "height": 8, "videoPosts": [{"type": 1020896, "parameters": {)" +
                settings + "}}]}]");
        ASSERT_TRUE(render());
        EXPECT_EQ(host().messages(), std::vector<std::string>{});
        EXPECT_TRUE(printed("Launching Quenza..."));
    }
    /// The seed is another each time.
    static std::string withoutSeed(const std::string& line) {
        const std::string option = " -seed ";
        const size_t at = line.find(option);
        if (at == std::string::npos) {
            return line;
        }
        const size_t end = line.find_first_not_of("-0123456789", at + option.size());
        EXPECT_GT(end, at + option.size()) << line;
        return line.substr(0, at + option.size()) + "N" + line.substr(end);
    }
    /// The renderer's own report on its scene.
    static std::string reportedLine(const fs::path& report) {
        EXPECT_TRUE(waitFor(report)) << "the renderer was never started";
        const std::string text = Quenza::unixLines(Quenza::fileBytes(utf8(report)));
        const std::string start = "\nCommand line: ";
        const size_t at = text.find(start) + start.size();
        EXPECT_TRUE(text.ends_with("\nResult: no faults\n")) << text;
        return withoutSeed(text.substr(at, text.find('\n', at) - at));
    }
};

/// The built renderer, which the registry names, on the scene that the plug-in has written.
TEST_F(WindowsLaunch, GivesTheRendererItsLineToTheLetter) {
    const fs::path out = exportFolder();
    const std::string scene = utf8(out / "scene.qzs");
    const std::string stem = utf8(out / "scene.renders" / "scene");
    const std::string outputs = " -o \"" + stem + ".png\" -qzio \"" + stem + ".qzi\" -uexro \"" + stem +
                                "_untonemapped.exr\" -texro \"" + stem + "_tonemapped.exr\"";
    const std::string few = R"(, "RS_HALT_SPP": 1)";
    const struct {
        std::string settings;
        std::string line;
    } cases[] = {
        {few, "quenza.exe -seed N --thread_priority belownormal \"" + scene + "\""},
        {few + R"(, "RS_CONSOLE": true, "RS_LOW_PRIORITY": false, "RS_NETWORK": true, "RS_NETWORK_PORT": 81)",
         "quenza_console.exe -seed N -n wm -p 81 \"" + scene + "\""},
        {few + R"(, "RS_SET_OUTPUT": true, "RS_OUTPUT_IN_RENDERS": true)",
         "quenza.exe -seed N --thread_priority belownormal" + outputs + " \"" + scene + "\""},
    };
    for (const char* const edition : {"Quenza Renderer", "Quenza RT"}) {
        install(QUENZA_RENDERER_DIR, edition);
        for (const auto& test : cases) {
            renderDocument(exportTo(out / "scene.qzs") + test.settings);
            EXPECT_EQ(reportedLine(out / "scene.report.txt"), test.line) << edition;
            fs::remove(out / "scene.report.txt");
        }
    }
    for (const char* const ending : {".png", ".qzi", "_untonemapped.exr", "_tonemapped.exr"}) {
        EXPECT_TRUE(waitFor(Quenza::nativePath(stem + ending))) << ending;
    }
}

} // namespace

#endif
