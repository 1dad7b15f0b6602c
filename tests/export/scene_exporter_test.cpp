// SPDX-License-Identifier: MIT
#include "export/exporter_fixture.h"
#include "host/ids.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/scene_unit.h"

using SceneExporterTest = ExporterTest;

TEST_F(SceneExporterTest, VerboseExportPrintsItsLines) {
    addStrip("strip", 3);
    addStrip("copy", 3);
    options.verbose = true;
    options.isAnimation = true;
    options.frame = 7;
    exportScene();
    const std::string decoration = ".__.--._.-._.-.__.--._.-.__.--._.-._.-.__.--._.-.__.--._.-._.-.__.--._.-."
                                   "__.--._.-._.-.__.--._.-.__.--._.-._"
                                   ".-.__.--._.-.__.--.";
    EXPECT_EQ(
        consoleLines(),
        (std::vector<std::string>{
            decoration, "Starting export...", "0.036000", "Exporting materials, objects and lights...",
            "--Exported strip: 3 Faces, 8 Vertices, 1 UVs. Processing Time: 0.000s. "
            "Export Time: 0.000s",
            "Object export time: 0.000 s", "Instances exported: 1", " ", "Processing time: 0 m, 0.000 s",
            "Saved scene to: " + folder().string() + "\\scene_frame000007.qzs", "Saving time: 0.000 s",
            decoration}));
    EXPECT_EQ(exporter().sceneFileName, "scene_frame000007.qzs");
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
