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
    /// The keys of `keys` that are true.
    static std::string flags(const Quenza::SceneNodeRenderSettings& node,
                             std::initializer_list<const char*> keys) {
        std::string set;
        for (const char* const key : keys) {
            set += node.getBool(key) ? std::string(key) + " " : "";
        }
        return set;
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

TEST_F(RenderSettingsExportTest, ModesSetTheirFlags) {
    BaseContainer& data = addVideoPost();
    const std::pair<int32_t, const char*> cases[] = {
        {RS_MODE_PATH, ""},
        {RS_MODE_BIDIRECTIONAL, "bidirectional "},
        {RS_MODE_MLT_PATH, "metropolis "},
        {RS_MODE_MLT_BIDIRECTIONAL, "metropolis bidirectional "},
        {RS_MODE_MATERIAL_ID, "material_id_tracer "},
        {RS_MODE_SHADOW, "shadow_pass "},
        {RS_MODE_DEPTH, "depth_pass "},
        {7, ""},
    };
    const auto modeFlags = [this] {
        return flags(exportSettings(),
                     {"metropolis", "bidirectional", "material_id_tracer", "shadow_pass", "depth_pass"});
    };
    data.RemoveData(RS_MODE);
    EXPECT_EQ(modeFlags(), "") << "without a mode";
    for (const auto& [mode, expected] : cases) {
        data.SetLong(RS_MODE, mode);
        EXPECT_EQ(modeFlags(), expected) << mode;
    }
}

TEST_F(RenderSettingsExportTest, EachFlagSetsItsKeyAlone) {
    BaseContainer& data = addVideoPost();
    const std::pair<int32_t, const char*> keys[] = {
        {RS_GPU, "gpu"},
        {RS_FOREGROUND_ALPHA, "render_foreground_alpha"},
        {RS_LOGGING, "logging"},
        {RS_SAVE_UNTONEMAPPED_EXR, "save_untonemapped_exr"},
        {RS_SAVE_TONEMAPPED_EXR, "save_tonemapped_exr"},
        {RS_SAVE_QZI, "save_qzi"},
        {RS_SAVE_PNG, "save_png"},
        {RS_GLASS_ACCELERATION, "glass_acceleration"},
        {RS_VERBOSE, "verbose"},
        {RS_AUTO_THREADS, "auto_choose_num_threads"},
        {RS_CACHE_TREES, "cache_trees"},
        {RS_WAIT_FOR_SLAVES, "wait_for_slave_frames_on_stop"},
        {RS_VIGNETTING, "vignetting"},
    };
    for (const auto& [on, onKey] : keys) {
        std::string set;
        for (const auto& [id, key] : keys) {
            data.SetBool(id, id == on);
        }
        for (const auto& [id, key] : keys) {
            set += exportSettings().getBool(key) ? key : "";
        }
        EXPECT_EQ(set, onKey);
        EXPECT_EQ(context().gpuRendering, on == RS_GPU);
    }
}

TEST_F(RenderSettingsExportTest, NumbersAreKeptWithinTheirLimits) {
    BaseContainer& data = addVideoPost();
    data.SetReal(RS_HALT_TIME, 2.5f);
    data.SetReal(RS_IMAGE_SAVE_PERIOD, 59.99f);
    data.SetLong(RS_BIH_TRI_THRESHOLD, INT32_MAX);
    data.SetLong(RS_NUM_THREADS, 6);
    EXPECT_EQ(exportSettings().getDouble("halt_time"), 2.5);
    EXPECT_EQ(exportSettings().getDouble("image_save_period"), 59) << "whole seconds";
    EXPECT_EQ(exportSettings().getInt("bih_tri_threshold"), INT32_MAX) << "in thousands";
    for (const auto& [automatic, threads] : {std::pair(1, 1), {0, 6}, {2, 6}}) {
        data.SetLong(RS_AUTO_THREADS, automatic);
        EXPECT_EQ(exportSettings().getBool("auto_choose_num_threads"), automatic == 1);
        EXPECT_EQ(exportSettings().getInt("num_threads"), threads);
    }
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
