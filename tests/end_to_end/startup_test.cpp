// SPDX-License-Identifier: MIT
#include "end_to_end/session.h"
#include "headless/tables/host_table.h"
#include "host/ids.h"
#include "host/tables.h"

#include <dlfcn.h>

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

TEST_F(Startup, TellsWhichLibraryFolderItTookAndPrintsTheBanner) {
    start();
    const std::vector<std::string> lines = newLines();
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[0], std::string("Loading quenza from: ") + QUENZA_RENDERER_DIR);
    EXPECT_EQ(lines[1], "Failed initialising Quenza sdk (error code:20):");
    EXPECT_EQ(lines[2], std::string("Failed to load DLL from '") + QUENZA_RENDERER_DIR + "' (Error code: 2)");
    EXPECT_EQ(lines[3], std::string("\n") + DECORATION);
    EXPECT_EQ(lines[4], "._.-. Quenza for Cinema 4D 3.6.24");
    EXPECT_EQ(lines[5].rfind("._.-. Developed by: ", 0), 0u);
    EXPECT_EQ(lines[6].rfind("._.-. For more information go to: ", 0), 0u);
    EXPECT_EQ(lines[7], std::string(DECORATION) + "\n");
}

TEST_F(Startup, CountsInitsAndRefusesOldHosts) {
    startHost();
    const auto close = [](void* library) { dlclose(library); };
    const std::unique_ptr<void, decltype(close)> library(
        dlopen((fs::path(QUENZA_BIN_DIR) / "cquenza.so").c_str(), RTLD_NOW | RTLD_LOCAL), close);
    ASSERT_NE(library, nullptr) << dlerror();
    const auto entry = reinterpret_cast<PluginEntry>(dlsym(library.get(), "c4d_main"));
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

} // namespace
