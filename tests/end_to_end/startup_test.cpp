// SPDX-License-Identifier: MIT
#include "end_to_end/plugin_folder.h"
#include "end_to_end/session.h"
#include "headless/model/handles.h"
#include "headless/render/document_render.h"
#include "headless/runtime/described_parameter.h"
#include "headless/tables/host_table.h"
#include "host/description.h"
#include "host/ids.h"
#include "host/tables.h"
#include "support/capturing_library.h"
#include "support/run_program.h"

#include <algorithm>

namespace {

namespace fs = std::filesystem;

using Startup = Session;

constexpr const char* DECORATION = ".__.--._.-._.-.__.--._.-.__.--._.-._.-.__.--._.-.__.--._.-._.-.__.--._.-."
                                   "__.--._.-._.-.__.--._.-.__.--._.-._.-."
                                   "__.--._.-.__.--.";

TEST_F(Startup, RegistersItsRowsInOrder) {
    std::string rows;
    start();
    for (const auto& entry : host().registrations().all()) {
        const PluginInfo& info = entry->info;
        rows += std::to_string(info.id) + " " + info.name.GetUtf8() + " | " + info.description.GetUtf8() +
                " | " + info.help.GetUtf8() + " | " + info.icon.GetUtf8() + " | " +
                std::to_string(info.info) + (info.priority != 0 ? ", " + std::to_string(info.priority) : "") +
                "\n";
    }
    EXPECT_EQ(
        rows,
        "1020892 Quenza Light | tMyLightTag |  | LightTag.tif | 1\n"
        "1021223 Quenza Exit Portal | TMyExitPortal |  | ExitPortal.tif | 1\n"
        "1022083 Quenza Camera | TCameraTag |  | CameraTag.tif | 1\n"
        "1022667 Quenza Subdivision | tSubdivision |  | subdivtag.tif | 1\n"
        "1029978 Quenza Compositing | TQuenzaCompositing |  | animationtag.tif | 1\n"
        "1024339 Bake UVW Tag of Quenza Material... |  | Bake UVW Tag of Quenza Material | About.tif | 0\n"
        "1024338 Bake Quenza Material on Object... |  | Bake Material on Object | About.tif | 0\n"
        "1020894 About Quenza for Cinema 4D |  | About | About.tif | 0\n"
        "1021852 Convert Materials to Quenza |  | Convert Materials | ConvertMats.tif | 0\n"
        "1022469 Import Quenza Material... |  | Import .qzm | Export.tif | 0\n"
        "1023920 Render with Quenza |  | Render with Quenza | Export.tif | 0\n"
        "1023984 Quenza Instance |  | Creates Instances | instance.tif | 536870912\n"
        "1024454 New Quenza Material |  | New Quenza Material | materialhelper.tif | 268435456\n"
        "1023696 Resume Rendering |  | Quenza Resume Rendering | resume.tif | 536870912\n"
        "1023695 Pause Rendering |  | Quenza Pause Rendering | pause.tif | 536870912\n"
        "1027825 Update Image |  | Quenza Update Image | convertmats.tif | 536870912\n"
        "1023599 Quenza Tonemapping |  | Quenza Interactive Tonemapping Dialog | tonemapping.tif | "
        "536870912\n"
        "1022273 Quenza Instance | Oquenzainstance |  | instance.tif | 536870916\n"
        "1028908 Quenza Section Plane | Oquenzasectionplane |  | instance.tif | 0\n"
        "1020896 Quenza Render Settings | oquenzarendersettings |  |  | 8, 100\n"
        "1022283 #$3 -- |  |  |  | 0\n"
        "1024271 My String GUI |  |  |  | 0\n"
        "1023863 Quenza QSL Shader | xcquenzaqslshader |  |  | 0\n"
        "1024337 Quenza Material | Mquenzamaterial |  |  | 536870913\n"
        "1024768 QSL Noise | xqslnoise |  |  | 0\n"
        "1024769 QSL Blend | xqslblend |  |  | 0\n"
        "1024770 QSL Gradient | xqslgradient |  |  | 0\n"
        "1029836 QSL Normal | xqslnormal |  |  | 0\n"
        "1027562 Quenza Message |  |  |  | 0\n");
}

/// The plug-in in a folder with other libraries beside it than the built ones.
class StartupOnLibrary : public Session {
protected:
    StartupOnLibrary() : plugin_(placePlugin(folder())) {}
    ~StartupOnLibrary() override { stop(); }

    fs::path libraryFolder() const { return folder() / "quenza_x64"; }
    /// The console of a start, up to the banner.
    std::vector<std::string> startLines() {
        startHost().loadPlugin(plugin_);
        EXPECT_TRUE(host().isStarted());
        std::vector<std::string> lines = newLines();
        lines.erase(std::find(lines.begin(), lines.end(), std::string("\n") + DECORATION), lines.end());
        return lines;
    }
    std::vector<std::string> devices() {
        std::vector<std::string> names;
        openDocument("", R"("RS_HALT_SPP": -1)");
        headless::VideoPost* const post = headless::renderingVideoPost(*host().document(), 0);
        for (const auto& parameter :
             headless::describe(headless::toHost(static_cast<headless::Node*>(post)))) {
            const BaseContainer choices = parameter.properties.GetContainer(DESC_CYCLE);
            for (int32_t i = 0; parameter.id == RS_GPU_DEVICE && i < choices.GetCount(); ++i) {
                names.push_back(choices.GetIndexData(i).GetString().GetUtf8());
            }
        }
        return names;
    }

    static constexpr int32_t RS_GPU_DEVICE = 1436;

private:
    fs::path plugin_;
};

TEST_F(StartupOnLibrary, TellsHowLoadingWent) {
    const std::string failed20 = "Failed initialising Quenza sdk (error code:20):";
    const std::string failed22 = "Failed initialising Quenza sdk (error code:22):";
    const auto noLibrary = [](const fs::path& path) {
        return "Failed to load DLL from '" + path.string() + "' (Error code: 2)";
    };
    // Without a folder of its own the plug-in looks into the installed renderer.
    const fs::path installed = QUENZA_RENDERER_DIR;
    EXPECT_EQ(startLines(), (std::vector<std::string>{"Loading quenza from: " + installed.string(), failed20,
                                                      noLibrary(installed)}));
    stop();

    const std::string loading = "Loading quenza from: " + libraryFolder().string();
    fs::create_directory(libraryFolder());
    EXPECT_EQ(startLines(), (std::vector<std::string>{loading, failed20, noLibrary(libraryFolder())}));
    EXPECT_EQ(devices(), std::vector<std::string>{});
    stop();

    fs::path library = placeLibrary(folder(), "half_x64", "quenza_sdk.dll");
    EXPECT_EQ(startLines(),
              (std::vector<std::string>{loading, failed22,
                                        "unable to get address of procedure 'quenzaGlobalLibraryInit'"}));
    stop();
    fs::remove(library);

    library = placeLibrary(folder(), "capturing_x64", "quenza_rt_sdk.dll");
    const capture::CapturingLibrary captured(library);
    captured->setDevices({{"Left card", 1}, {"Right card", 0}});
    EXPECT_EQ(startLines(), (std::vector<std::string>{loading, "Successfully initialised Quenza RT."}));
    EXPECT_EQ(devices(), (std::vector<std::string>{"Left card CUDA", "Right card OpenCL"}));
    stop();
    placeLibrary(folder(), "capturing_x64", "quenza_sdk.dll");
    captured->fail("HardwareInfoDLLAPI.getGPUInfo", 1);
    EXPECT_EQ(startLines(), (std::vector<std::string>{loading, "Successfully initialised Quenza Renderer."}));
    EXPECT_EQ(devices(), std::vector<std::string>{}) << "those of the last start are gone";
    stop();
    captured->fail("quenzaCreateInstance:HardwareInfoDLLAPI", 1);
    EXPECT_EQ(startLines(),
              (std::vector<std::string>{loading, "Failed to create Instance of 'HardwareInfoDLLAPI'",
                                        "Successfully initialised Quenza Renderer."}));
    stop();

    const std::vector<std::string> look{"quenzaGlobalLibraryInit", "quenzaCreateInstance:HardwareInfoDLLAPI",
                                        "HardwareInfoDLLAPI.getGPUInfo", "HardwareInfoDLLAPI.destroy",
                                        "quenzaGlobalLibraryShutdown"};
    std::vector<std::string> all = look;
    all.insert(all.end(), look.begin(), look.end());
    all.insert(all.end(), {look[0], look[1], look[4]});
    EXPECT_EQ(captured->actions(), all);
    EXPECT_EQ(captured->liveObjects(), 0);
    EXPECT_EQ(captured->violations(), std::vector<std::string>{});
}

TEST_F(Startup, LoadsTheLibraryBesideItAndPrintsTheBanner) {
    start();
    const std::vector<std::string> lines = newLines();
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_EQ(lines[0], "Loading quenza from: " + fs::absolute(QUENZA_BIN_DIR "/quenza_x64").string());
    EXPECT_EQ(lines[1], "Successfully initialised Quenza Renderer.");
    EXPECT_EQ(lines[2], std::string("\n") + DECORATION);
    EXPECT_EQ(lines[3], "._.-. Quenza for Cinema 4D 3.6.24");
    EXPECT_EQ(lines[4].rfind("._.-. Developed by: ", 0), 0u);
    EXPECT_EQ(lines[5].rfind("._.-. For more information go to: ", 0), 0u);
    EXPECT_EQ(lines[6], std::string(DECORATION) + "\n");
}

TEST_F(Startup, CountsInitsAndRefusesOldHosts) {
    startHost();
    const Quenza::LoadedLibrary library(Quenza::PLUGIN_PATH);
    const auto entry = library.find<PluginEntry>("c4d_main");
    ASSERT_NE(entry, nullptr);
    HostTable tables = *headless::hostTable();
    Filename path("/somewhere");

    tables.apiVersion = API_VERSION - 1;
    EXPECT_EQ(entry(C4DPL_INIT, &tables, nullptr, &path), -3);
    tables.apiVersion = API_VERSION;
    EXPECT_EQ(entry(C4DPL_INIT, &tables, nullptr, nullptr), -3);
    EXPECT_EQ(entry(C4DPL_INIT, nullptr, nullptr, &path), -3);
    EXPECT_EQ(entry(C4DPL_INIT, &tables, nullptr, &path), 1);
    EXPECT_EQ(entry(C4DPL_INIT, nullptr, nullptr, nullptr), 1) << "a second init touches nothing";

    const auto message = [](intptr_t id) { return reinterpret_cast<void*>(id); };
    EXPECT_EQ(entry(C4DPL_VERSION, nullptr, nullptr, nullptr), 3);
    EXPECT_EQ(entry(C4DPL_MESSAGE, message(0), nullptr, nullptr), 1);
    EXPECT_EQ(entry(C4DPL_MESSAGE, message(4711), nullptr, nullptr), -1);
    EXPECT_EQ(entry(5, nullptr, nullptr, nullptr), -1);
    EXPECT_EQ(entry(C4DPL_END, nullptr, nullptr, nullptr), 1);
    EXPECT_EQ(entry(C4DPL_END, nullptr, nullptr, nullptr), 1);
}

/// A worker's message reaches a message box on the main thread.
TEST_F(Startup, ShowsMessagesOfWorkers) {
    start();
    SpecialEventAdd(1027562, 1, reinterpret_cast<uintptr_t>(new String("Background \xC3\xBC")));
    EXPECT_TRUE(host().runUntil([&] { return !host().messages().empty(); }, std::chrono::seconds(5)));
    EXPECT_EQ(host().messages(), std::vector<std::string>{"Background \xC3\xBC"});
}

#ifndef _WIN32
/// The program without the rest of its package.
TEST_F(Startup, TellsWhereItLookedForThePlugin) {
    const std::string root = folder().string();
    std::filesystem::create_directory(root + "/headless");
    std::filesystem::copy_file(QUENZA_BIN_DIR "/quenza-headless", root + "/headless/quenza-headless");
    const Quenza::Outcome run = Quenza::runProgram(root + "/headless/quenza-headless", {"list", "plugins"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "quenza-headless: There is no plug-in " + root + "/headless/cquenza.so, and no " +
                              root + "/quenza/cquenza.so: --plugin FILE names one elsewhere\n");
}
#endif

} // namespace
