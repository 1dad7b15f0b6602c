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
    BaseContainer& addVideoPost() {
        BaseVideoPost* const videoPost = BaseVideoPost::Alloc(PLUGINID_RENDER_SETTINGS);
        document()->GetActiveRenderData()->InsertVideoPost(videoPost);
        return *videoPost->GetDataInstance();
    }
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
    EXPECT_EQ(context().overrideColour.x, 0.71f);
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

TEST_F(RenderSettingsExportTest, EveryBoolHasItsKey) {
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
    EXPECT_TRUE(exportSettings().getBool("vignetting")) << "documents without the entry";
    for (const auto& [on, onKey] : keys) {
        for (const auto& [id, key] : keys) {
            data.SetBool(id, id == on);
        }
        const Quenza::SceneNodeRenderSettings& node = exportSettings();
        for (const auto& [id, key] : keys) {
            EXPECT_EQ(node.getBool(key), id == on) << key << " when " << onKey << " is on";
        }
        EXPECT_EQ(context().gpuRendering, on == RS_GPU);
        EXPECT_FALSE(node.getBool("polarisation"));
    }
}

TEST_F(RenderSettingsExportTest, NumbersHaveTheirKeys) {
    BaseContainer& data = addVideoPost();
    data.SetReal(RS_LARGE_MUTATION_PROB, 0.3f);
    data.SetReal(RS_MAX_CHANGE, 0.02f);
    data.SetLong(RS_MAX_REJECTIONS, 11);
    data.SetLong(RS_MAX_DEPTH, 12);
    data.SetLong(RS_BIH_TRI_THRESHOLD, 800);
    data.SetReal(RS_HALT_TIME, 2.5f);
    data.SetReal(RS_HALT_SPP, -1.0f);
    data.SetReal(RS_DISPLAY_PERIOD, 1800.9f);
    data.SetReal(RS_IMAGE_SAVE_PERIOD, 59.99f);
    const Quenza::SceneNodeRenderSettings& node = exportSettings();
    EXPECT_EQ(node.getDouble("large_mutation_prob"), double(0.3f));
    EXPECT_EQ(node.getDouble("max_change"), double(0.02f));
    EXPECT_EQ(node.getInt("max_num_consec_rejections"), 11);
    EXPECT_EQ(node.getInt("max_depth"), 12);
    EXPECT_EQ(node.getInt("bih_tri_threshold"), 800000);
    EXPECT_EQ(node.getDouble("halt_time"), 2.5);
    EXPECT_EQ(node.getDouble("halt_samples_per_pixel"), -1);
    EXPECT_EQ(node.getDouble("display_period"), 1800);
    EXPECT_EQ(node.getDouble("image_save_period"), 59);

    data.SetLong(RS_BIH_TRI_THRESHOLD, INT32_MAX);
    EXPECT_EQ(exportSettings().getInt("bih_tri_threshold"), INT32_MAX);
}

TEST_F(RenderSettingsExportTest, ThreadsAreCountedByHandOnly) {
    BaseContainer& data = addVideoPost();
    data.SetLong(RS_NUM_THREADS, 6);
    const struct { int32_t automatic, threads; } cases[] = {{1, 1}, {0, 6}, {2, 6}};
    for (const auto& c : cases) {
        data.SetLong(RS_AUTO_THREADS, c.automatic);
        const Quenza::SceneNodeRenderSettings& node = exportSettings();
        EXPECT_EQ(node.getBool("auto_choose_num_threads"), c.automatic == 1);
        EXPECT_EQ(node.getInt("num_threads"), c.threads);
    }
}

TEST_F(RenderSettingsExportTest, ClayOptionGoesToTheContext) {
    BaseContainer& data = addVideoPost();
    data.SetBool(RS_OVERRIDE_DEFAULT_MATERIAL, true);
    data.SetVector(RS_DEFAULT_MATERIAL_COLOUR, {0.25f, 0.5f, 0.75f});
    exportSettings();
    EXPECT_TRUE(context().overrideMaterials);
    EXPECT_EQ(context().overrideColour, Vector(0.25f, 0.5f, 0.75f));
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
    const auto& node = static_cast<const Quenza::SceneNodeRenderSettings&>(*scene().getRenderSettings());
    std::vector<std::string> names;
    for (uint64_t i = 0; i < node.getNumLayers(); ++i) {
        names.push_back(node.getLayer(i)->name.toStdString());
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Sun", "Layer 2", "Layer 4: Rim", "Layer 4", "Layer 6"}));
}
