// SPDX-License-Identifier: MIT
#include "export/render_settings_export.h"

#include "export/gpu_devices.h"
#include "shared/export_context.h"
#include "shared/parameter_ids.h"
#include "shared/text.h"

#include <algorithm>
#include <limits>

using namespace Quenza;

namespace {

struct Mode {
    int32_t value;
    bool metropolis;
    bool bidirectional;
};

/// The modes of no row here, the pass modes among them, use neither.
constexpr Mode MODES[] = {
    {RS_MODE_BIDIRECTIONAL, false, true},
    {RS_MODE_MLT_PATH, true, false},
    {RS_MODE_MLT_BIDIRECTIONAL, true, true},
};

Mode modeOf(int32_t value) {
    for (const Mode& mode : MODES) {
        if (mode.value == value) {
            return mode;
        }
    }
    return {value, false, false};
}

Ref<GPUDeviceSettings> selectedDevice(int32_t index) {
    const std::vector<GpuDevice>& devices = gpuDevices();
    if (index < 0 || size_t(index) >= devices.size()) {
        return nullptr;
    }
    const GpuDevice& device = devices[size_t(index)];
    const Ref<GPUDeviceSettings> settings = new GPUDeviceSettings;
    settings->device_name = toSceneString(device.name);
    // The node's numbers are not those of the list.
    settings->subsystem = device.kind == GPU_KIND_CUDA ? GPUDeviceSettings::CUDA : GPUDeviceSettings::OPENCL;
    return settings;
}

/// The parameter counts thousands.
int32_t triangleThreshold(const BaseContainer& data) {
    const int64_t triangles = int64_t(data.GetLong(RS_BIH_TRI_THRESHOLD)) * 1000;
    return int32_t(std::clamp<int64_t>(triangles, std::numeric_limits<int32_t>::min(),
                                       std::numeric_limits<int32_t>::max()));
}

void exportSampling(SceneNodeRenderSettings& node, const BaseContainer& data) {
    const Mode mode = modeOf(data.GetLong(RS_MODE));
    node.setBool("gpu", data.GetBool(RS_GPU));
    node.setBool("render_foreground_alpha", data.GetBool(RS_FOREGROUND_ALPHA));
    node.setBool("depth_pass", mode.value == RS_MODE_DEPTH);
    node.setBool("shadow_pass", mode.value == RS_MODE_SHADOW);
    node.setBool("material_id_tracer", mode.value == RS_MODE_MATERIAL_ID);
    node.setBool("metropolis", mode.metropolis);
    node.setDouble("large_mutation_prob", double(data.GetReal(RS_LARGE_MUTATION_PROB)));
    node.setDouble("max_change", double(data.GetReal(RS_MAX_CHANGE)));
    node.setInt("max_num_consec_rejections", data.GetLong(RS_MAX_REJECTIONS));
    node.setInt("max_depth", data.GetLong(RS_MAX_DEPTH));
    node.setInt("bih_tri_threshold", triangleThreshold(data));
    node.setDouble("halt_time", double(data.GetReal(RS_HALT_TIME)));
    node.setDouble("halt_samples_per_pixel", double(data.GetReal(RS_HALT_SPP)));
    node.setBool("bidirectional", mode.bidirectional);
}

void exportOutput(SceneNodeRenderSettings& node, const BaseContainer& data) {
    node.setBool("logging", data.GetBool(RS_LOGGING));
    // Stored as reals, and read as whole numbers of seconds: the fraction is dropped.
    node.setDouble("display_period", double(data.GetLong(RS_DISPLAY_PERIOD)));
    node.setDouble("image_save_period", double(data.GetLong(RS_IMAGE_SAVE_PERIOD)));
    node.setBool("save_untonemapped_exr", data.GetBool(RS_SAVE_UNTONEMAPPED_EXR));
    node.setBool("save_tonemapped_exr", data.GetBool(RS_SAVE_TONEMAPPED_EXR));
    node.setBool("save_qzi", data.GetBool(RS_SAVE_QZI));
    node.setBool("save_png", data.GetBool(RS_SAVE_PNG));
}

void exportSystem(SceneNodeRenderSettings& node, const BaseContainer& data) {
    node.setBool("glass_acceleration", data.GetBool(RS_GLASS_ACCELERATION));
    node.setBool("verbose", data.GetBool(RS_VERBOSE));
    const bool autoThreads = data.GetLong(RS_AUTO_THREADS) == 1;
    node.setBool("auto_choose_num_threads", autoThreads);
    // Else the row stays as a new node has it, and the renderer doesn't look at it.
    if (!autoThreads) {
        node.setInt("num_threads", data.GetLong(RS_NUM_THREADS));
    }
    node.setBool("cache_trees", data.GetBool(RS_CACHE_TREES));
    // No parameter turns it on.
    node.setBool("polarisation", false);
    node.setBool("wait_for_slave_frames_on_stop", data.GetBool(RS_WAIT_FOR_SLAVES));
    // Documents older than the parameter have vignetting.
    node.setBool("vignetting", data.GetBool(RS_VIGNETTING, true));
}

} // namespace

bool exportRenderSettings(SceneNodeRenderSettings& node, ExportContext& context) {
    if (!context.renderSettings) {
        node.setBool("metropolis", false);
        node.setBool("bidirectional", true);
        return true;
    }
    const BaseContainer& data = *context.renderSettings;
    context.overrideMaterials = data.GetBool(RS_OVERRIDE_DEFAULT_MATERIAL);
    context.overrideColour = data.GetVector(RS_DEFAULT_MATERIAL_COLOUR);
    context.gpuRendering = data.GetBool(RS_GPU);
    node.gpu_device = selectedDevice(data.GetLong(RS_GPU_DEVICE, -1));
    // `display_period` and `polarisation` are no keys of a new node; all others are, and keep their places.
    exportSampling(node, data);
    exportOutput(node, data);
    exportSystem(node, data);
    return true;
}
