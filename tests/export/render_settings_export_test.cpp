// SPDX-License-Identifier: MIT
#include "export/render_settings_export.h"

#include "export/exporter_fixture.h"
#include "export/gpu_devices.h"
#include "export/layer_export.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

namespace {

class RenderSettingsExportTest : public ExporterTest {
protected:
    ~RenderSettingsExportTest() override { gpuDevices().clear(); }
    Quenza::SceneNodeRenderSettings& exportSettings() {
        node_ = new Quenza::SceneNodeRenderSettings;
        EXPECT_TRUE(exportRenderSettings(*node_, makeContext()));
        return *node_;
    }

private:
    Quenza::Ref<Quenza::SceneNodeRenderSettings> node_;
};

} // namespace

TEST_F(RenderSettingsExportTest, WithoutAVideoPostPathsAreBidirectional) {
    const Quenza::SceneNodeRenderSettings& node = exportSettings();
    EXPECT_FALSE(node.getBool("metropolis"));
    EXPECT_TRUE(node.getBool("bidirectional"));
    EXPECT_FALSE(node.settings.contains("polarisation"));
    EXPECT_EQ(node.getInt("max_depth"), 10000);
    EXPECT_FALSE(context().overrideMaterials);
    EXPECT_EQ(context().overrideColour, Vector(0.71f, 0.62f, 0.53f));
    addVideoPost();
    EXPECT_TRUE(exportSettings().getBool("vignetting")) << "documents without the entry";
}

TEST_F(RenderSettingsExportTest, DeviceIsOneOfTheList) {
    gpuDevices() = {{"First", 2}, {"Second", 1}};
    BaseContainer& data = addVideoPost();
    data.SetBool(RS_GPU, true);
    EXPECT_TRUE(exportSettings().gpu_device.isNull()) << "none was ever chosen";
    const struct {
        int32_t index;
        const char* device;
    } cases[] = {{-1, ""}, {0, "First 1"}, {1, "Second 2"}, {2, ""}};
    for (const auto& c : cases) {
        data.SetLong(RS_GPU_DEVICE, c.index);
        const Quenza::Ref<Quenza::GPUDeviceSettings> device = exportSettings().gpu_device;
        EXPECT_EQ(device ? device->device_name.toStdString() + " " + std::to_string(device->subsystem) : "",
                  c.device)
            << "name and subsystem, 1 OpenCL and 2 CUDA";
    }
}

TEST_F(RenderSettingsExportTest, LayersHaveTheUsersNames) {
    BaseContainer& data = addVideoPost();
    data.SetString(RS_LAYER_NAME_1 + 3, "Rim");
    data.SetString(RS_LAYER_NAME_1 + 5, "Layer 6");
    exportScene();
    EXPECT_TRUE(exporter().layerSettings.empty());

    // Sun has a name already; key 12 is none of the user's and leaves its slot without one.
    exporter().layerSettings.push_back(new Quenza::LayerSetting("Sun"));
    context().layerMap = {{-2, 0}, {12, 1}, {3, 2}, {5, 4}};
    exportLayers(exporter());
    EXPECT_TRUE(exporter().layerSettings[1].isNull());
    EXPECT_EQ(layerNames(),
              (std::vector<std::string>{"Sun", "Layer 2", "Layer 4: Rim", "Layer 4", "Layer 6"}));
}
