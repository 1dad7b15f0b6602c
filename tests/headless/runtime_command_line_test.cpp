// SPDX-License-Identifier: MIT
#include "headless/app/command_line.h"
#include "headless/app/export_settings.h"
#include "headless/app/parameter_setting.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/resources/resource_folder.h"
#include "headless/runtime_fixture.h"
#include "support/thrown_message.h"

namespace headless {
namespace {

using Quenza::thrownMessage;

Arguments parse(const std::vector<std::string>& words) {
    return parseArguments(commandLine(), words);
}

TEST(ArgumentsTest, ReadsOptionsAnywhere) {
    const Arguments arguments = parse({"--plugin", "p.so", "render", "--set=A=1", "doc.json", "--set", "B=2",
                                       "--frames", "-5--1", "--answer-file", "x"});
    ASSERT_NE(arguments.command, nullptr);
    EXPECT_EQ(arguments.command->name, "render");
    EXPECT_EQ(arguments.operands, Lines{"doc.json"});
    EXPECT_EQ(arguments.values("--set"), (Lines{"A=1", "B=2"}));
    EXPECT_EQ(arguments.value("--plugin"), "p.so");
    EXPECT_EQ(arguments.value("--frames"), "-5--1");
    EXPECT_FALSE(arguments.has("--to"));
    EXPECT_EQ(parse({"render", "--", "--strange name"}).operands, Lines{"--strange name"});
    EXPECT_TRUE(parse({"render", "--help"}).wantsHelp);
}

TEST(ArgumentsTest, TellsWhatIsWrong) {
    const struct {
        std::vector<std::string> words;
        const char* message;
    } cases[] = {
        {{}, "A command is missing"},
        {{"rendr"}, "There is no command rendr; is render meant?"},
        {{"render"}, "render needs DOCUMENT"},
        {{"render", "a", "b"}, "One word too many: b"},
        {{"list"}, "list needs WHAT"},
        {{"list", "descriptions", "a", "b"}, "One word too many: b"},
        {{"render", "a", "--fram", "1"},
         "There is no option --fram of render; is --frame or --frames meant?"},
        {{"--to", "x", "render"}, "There is no option --to"},
        {{"render", "a", "--to"}, "--to needs a value: --to FILE.qzs"},
        {{"render", ""}, "render needs DOCUMENT"},
        {{"render", "a", "--to", ""}, "--to needs a value: --to FILE.qzs"},
        {{"render", "a", "--to="}, "--to needs a value: --to FILE.qzs"},
        {{"--answer-file", "", "open", "a"}, "--answer-file needs a value: --answer-file PATH"},
        {{"render", "a", "--frame", "1", "--frame", "2"}, "--frame was given twice"},
        {{"list", "plugin"}, "list takes plugins or descriptions or menus, not plugin"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(thrownMessage<UsageError>([&] { parse(test.words); }), test.message);
    }
}

/// The render settings of the plug-in.
class Settings : public RuntimeTest {
protected:
    Settings() {
        start().loadPlugin(Quenza::PLUGIN_PATH);
        host().open(std::make_unique<Document>());
    }
    Document& document() { return *host().document(); }
    BaseContainer& set(const std::string& setting) {
        VideoPost& settings = requireRenderSettings(document());
        applySetting(*toHost(&settings), *host().descriptionOf(RENDER_SETTINGS), setting);
        return settings.data;
    }
    std::string refusal(const std::string& setting) {
        return thrownMessage<UsageError>([&] { set(setting); });
    }
};

TEST_F(Settings, TakeValuesOfEachType) {
    EXPECT_EQ(set("RS_HALT_SPP=16").FindData(1382)->GetType(), DA_REAL);
    EXPECT_EQ(set("1382=2.5").GetReal(1382), 2.5f);
    EXPECT_EQ(set("RS_MAX_DEPTH=7").FindData(1330)->GetType(), DA_LONG);
    EXPECT_EQ(set("RS_GPU=on").GetBool(1435), true);
    EXPECT_EQ(set("RS_GPU=No").GetBool(1435), false);
    for (const char* const path : {"RS_MODE_PATH", "1335", "rs_mode_path"}) {
        EXPECT_EQ(set(std::string("RS_MODE=") + path).GetLong(1334), 1335) << path;
    }
    EXPECT_EQ(set("RS_DEFAULT_MATERIAL_COLOUR=0.1,0.2,1").GetVector(1424), Vector(0.1f, 0.2f, 1.0f));
    EXPECT_EQ(set("RS_OUTPUT_FILE=/out/a=b.png").GetFilename(1422),
              Filename(String(std::filesystem::absolute("/out/a=b.png").string())));
    EXPECT_EQ(set("RS_OUTPUT_FILE=a.png").GetFilename(1422),
              Filename(String((std::filesystem::current_path() / "a.png").string())));
    EXPECT_EQ(set("1410=Key, left").GetString(1410), String("Key, left"));
    EXPECT_EQ(set("rs_halt_spp=3").GetReal(1382), 3.0f) << "names in either case";
    EXPECT_EQ(document().activeRenderData()->videoPosts().first()->next, nullptr);
}

TEST_F(Settings, TellWhatIsWrong) {
    const struct {
        const char* setting;
        const char* message;
    } cases[] = {
        {"RS_HALT_SPP", "\"RS_HALT_SPP\" is no setting: it takes NAME=VALUE"},
        {"=1", "\"=1\" is no setting: it takes NAME=VALUE"},
        {"RS_HALTSPP=1", "Quenza Render Settings has no parameter RS_HALTSPP; is RS_HALT_SPP meant? "
                         "(\"quenza-headless list descriptions\" names them all)"},
        {"99=1", "Quenza Render Settings has no parameter 99 (\"quenza-headless list "
                 "descriptions\" names them all)"},
        {"RS_HALT_SPP=many", "RS_HALT_SPP can't be \"many\": it takes a number"},
        {"RS_HALT_SPP=", "RS_HALT_SPP can't be \"\": it takes a number"},
        {"RS_HALT_SPP=nan", "RS_HALT_SPP can't be \"nan\": it takes a number"},
        {"RS_HALT_SPP=-2", "RS_HALT_SPP can't be \"-2\": the least value is -1"},
        {"RS_MAX_DEPTH=1.5", "RS_MAX_DEPTH can't be \"1.5\": it takes a whole number"},
        {"RS_GPU=maybe", "RS_GPU can't be \"maybe\": a flag is true or false"},
        {"RS_DEFAULT_MATERIAL_COLOUR=1,2",
         "RS_DEFAULT_MATERIAL_COLOUR can't be \"1,2\": it takes three numbers x,y,z"},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(refusal(test.setting).substr(0, std::string(test.message).size()), test.message);
    }
    EXPECT_NE(refusal("RS_MODE=RS_MODE_PAT").find("is RS_MODE_PATH"), std::string::npos);
}

TEST_F(Settings, RefuseFilesAndFramesThatAreNone) {
    VideoPost& settings = requireRenderSettings(document());
    settings.info |= BIT_VPDISABLED;
    EXPECT_EQ(&requireRenderSettings(document()), &settings) << "the one that is there is enabled";
    EXPECT_EQ(thrownMessage<UsageError>([&] { static_cast<void>(exportTo(settings, "a.png")); }),
              "--to writes a scene: a.png should end with .qzs");
    EXPECT_EQ(thrownMessage<UsageError>([&] { static_cast<void>(exportTo(settings, "/out/")); }),
              "--to needs a file, not the folder /out/");
    const std::string folder = std::filesystem::temp_directory_path().string();
    EXPECT_EQ(thrownMessage<UsageError>([&] { static_cast<void>(exportTo(settings, folder)); }),
              "--to needs a file, not the folder " + folder);
    EXPECT_EQ(parseFrameRange("-5--1"), std::pair(-5, -1));
    for (const char* const wrong : {"", "5", "5-", "-", "1-2-3", "a-b", "3-2", "1 - 2"}) {
        EXPECT_THROW(parseFrameRange(wrong), UsageError) << wrong;
    }
    EXPECT_THROW(parseFrame("3x"), UsageError);
}

} // namespace
} // namespace headless
