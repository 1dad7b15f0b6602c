// SPDX-License-Identifier: MIT
#include "export/exporter_fixture.h"
#include "export/frame_file_name.h"
#include "export/time_text.h"
#include "host/ids.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/scene_unit.h"

using SceneExporterTest = ExporterTest;

TEST_F(SceneExporterTest, VerboseExportPrintsItsLines) {
    options.verbose = true;
    options.isAnimation = true;
    options.frame = 7;
    exportScene();
    const std::string decoration = ".__.--._.-._.-.__.--._.-.__.--._.-._.-.__.--._.-.__.--._.-._.-.__.--._.-."
                                   "__.--._.-._.-.__.--._.-.__.--._.-._"
                                   ".-.__.--._.-.__.--.";
    EXPECT_EQ(consoleLines(), (std::vector<std::string>{
                                  decoration, "Starting export...", "0.036000",
                                  "Exporting materials, objects and lights...", "Object export time: 0.000 s",
                                  "Instances exported: 0", " ", "Processing time: 0 m, 0.000 s",
                                  "Saved scene to: " + folder().string() + "\\scene_frame000007.qzs",
                                  "Saving time: 0.000 s", decoration}));
    EXPECT_EQ(exporter().sceneFileName, "scene_frame000007.qzs");
}

TEST_F(SceneExporterTest, NothingToExportGivesNoScene) {
    SceneExporter without;
    EXPECT_TRUE(without.exportScene().isNull());
    EXPECT_TRUE(without.runHierarchy(nullptr).isNull());
    ExportContext empty(nullptr, Filename(), nullptr, 0, 640, 480, false, true, true, false);
    SceneExporter exporter;
    exporter.context = &empty;
    EXPECT_TRUE(exporter.exportScene().isNull());
    EXPECT_TRUE(exporter.runHierarchy(nullptr).isNull());
    EXPECT_TRUE(consoleLines().empty());
    exporter.context = &makeContext(); // a document without objects
    EXPECT_TRUE(exporter.runHierarchy(nullptr).isNull());
}

TEST_F(SceneExporterTest, TheHostsWalkExportsOnce) {
    addCube("cube");
    addCube("other");
    SceneExporter exporter;
    exporter.context = &makeContext();
    const Quenza::Ref<Quenza::SceneNodeRoot> root = exporter.runHierarchy(nullptr);
    ASSERT_TRUE(root);
    EXPECT_EQ(root->getNumChildrenOfType(Quenza::NODE_MODEL), 2u);
    EXPECT_EQ(root->getNumChildrenOfType(Quenza::NODE_METADATA), 1u);
}

TEST(TimeText, HasMinutesAndThreeDecimals) {
    const struct {
        uint32_t milliseconds;
        const char* text;
    } cases[] = {
        {0, "0 m, 0.000 s"}, {1234, "0 m, 1.234 s"}, {61500, "1 m, 1.500 s"}, {7230000, "120 m, 30.000 s"}};
    for (const auto& test : cases) {
        EXPECT_EQ(longTimeText(static_cast<float>(test.milliseconds) * 0.001f), test.text);
    }
}

TEST_F(SceneExporterTest, FrameEntersTheFileNameOfAnAnimation) {
    const struct {
        int32_t frame;
        bool isAnimation;
        const char* name;
    } cases[] = {{7, true, "b_frame000007.qzs"},
                 {7, false, "b.qzs"},
                 {1234567, true, "b_frame1234567.qzs"},
                 {-3, true, "b_frame-00003.qzs"}};
    for (const auto& c : cases) {
        EXPECT_EQ(frameFileName("b", c.frame, c.isAnimation, ".qzs"), c.name);
    }
}

TEST_F(SceneExporterTest, ContextFindsFoldersAndNames) {
    const Filename path(String((folder() / "my.scene.qzs").string()));
    const ExportContext context(document(), path, nullptr, 0, 640, 480, false, true, false, false);
    EXPECT_EQ(context.sceneBaseName, "my.scene");
    EXPECT_EQ(context.sceneDirectory.GetString(), String(folder().string()));
    EXPECT_TRUE(std::filesystem::is_directory(folder() / "textures.my.scene"));
    EXPECT_FLOAT_EQ(context.exposureDuration, 0.05f);
    EXPECT_FALSE(context.defaultMaterialUID.isValid());

    Quenza::Vector<Quenza::String> extraFiles;
    const Filename other(String((folder() / "other.qzs").string()));
    const ExportContext preview(document(), other, &extraFiles, 0, 640, 480, false, true, false, false);
    EXPECT_FALSE(std::filesystem::exists(folder() / "textures.other"));
    EXPECT_TRUE(std::filesystem::is_directory(preview.textureDirectory.GetUtf8()));

    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder());
    const ExportContext scan(document(), Filename(), nullptr, 0, 640, 480, false, true, false, false);
    EXPECT_FALSE(std::filesystem::exists("textures."));
    std::filesystem::current_path(before);
}

TEST_F(SceneExporterTest, UnitComesFromTheVideoPostOrTheHost) {
    BaseContainer& world = host().worldPreferences();
    for (const auto& [unit, metres] :
         {std::pair(1, 1000.0f), {2, 1.0f}, {3, 0.01f}, {4, 0.001f}, {9, 1.0f}}) {
        world.SetLong(WPREF_UNITS_BASIC, unit);
        EXPECT_EQ(makeContext().sceneScale, metres) << unit;
    }
    addVideoPost();
    BaseVideoPost* const disabled = document()->GetActiveRenderData()->GetFirstVideoPost();
    disabled->SetBit(BIT_VPDISABLED);
    EXPECT_EQ(makeContext().renderSettings, nullptr);
    document()->GetActiveRenderData()->InsertVideoPost(BaseVideoPost::Alloc(PLUGINID_RENDER_SETTINGS),
                                                       disabled);
    BaseContainer& settings = *disabled->GetNext()->GetDataInstance();
    EXPECT_EQ(makeContext().renderSettings, &settings);
    EXPECT_EQ(makeContext().sceneScale, 0.01f); // the default of a container without the number
    settings.SetLong(RS_UNIT, RS_UNIT_CUSTOM);
    EXPECT_EQ(makeContext().sceneScale, 0.0f) << "custom without a scale";
    settings.SetReal(RS_CUSTOM_UNIT_SCALE, 2.5f);
    for (const auto& [unit, metres] : {std::pair(int32_t(RS_UNIT_KM), 1000.0f),
                                       {RS_UNIT_M, 1.0f},
                                       {RS_UNIT_CM, 0.01f},
                                       {RS_UNIT_MM, 0.001f},
                                       {RS_UNIT_CUSTOM, 2.5f},
                                       {7, 1.0f}}) {
        settings.SetLong(RS_UNIT, unit);
        EXPECT_EQ(makeContext().sceneScale, metres) << unit;
    }
}
