// SPDX-License-Identifier: MIT
#include "export/render_settings_post.h"

#include "export/gpu_devices.h"
#include "host/general.h"
#include "host/ids.h"
#include "shared/described_data.h"
#include "shared/main_thread_message.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/plugin_state.h"

namespace {

/// Marks a node that the walk of a render leaves out.
constexpr int32_t BIT_LEFT_OUT = 4;

int32_t preferredUnit() {
    switch (GetWorldContainerInstance()->GetLong(WPREF_UNITS_BASIC)) {
    case 1:
        return RS_UNIT_KM;
    case 2:
        return RS_UNIT_M;
    case 3:
        return RS_UNIT_CM;
    case 4:
        return RS_UNIT_MM;
    default:
        return RS_UNIT_CUSTOM;
    }
}

void initSampling(BaseContainer& data) {
    data.SetLong(RS_MAX_DEPTH, 10000);
    data.SetLong(RS_MAX_REJECTIONS, 1000);
    data.SetReal(RS_HALT_TIME, -1.0f);
    data.SetLong(RS_MODE, RS_MODE_MLT_BIDIRECTIONAL);
    data.SetReal(RS_LARGE_MUTATION_PROB, 0.4f);
    data.SetReal(RS_MAX_CHANGE, 0.01f);
    data.SetReal(RS_HALT_SPP, -1.0f);
    data.SetBool(RS_FOREGROUND_ALPHA, false);
    data.SetBool(RS_GLASS_ACCELERATION, false);
    data.SetBool(RS_VIGNETTING, true);
    data.SetBool(RS_GPU, false);
    data.SetLong(RS_GPU_DEVICE, -1);
}

void initScene(BaseContainer& data) {
    data.SetReal(RS_CUSTOM_UNIT_SCALE, 1.0f);
    data.SetLong(RS_UNIT, preferredUnit());
    data.SetBool(RS_OVERRIDE_DEFAULT_MATERIAL, false);
    data.SetVector(RS_DEFAULT_MATERIAL_COLOUR, Vector(0.71f, 0.62f, 0.53f));
    data.SetBool(RS_MERGE_VERTICES, true);
    for (int32_t layer = RS_LAYER_NAME_1; layer <= RS_LAYER_NAME_10; ++layer) {
        data.SetString(layer, String("Layer ") + LongToString(layer - RS_LAYER_NAME_1 + 1));
    }
}

void initBackground(BaseContainer& data) {
    data.SetReal(RS_TURBIDITY, 2.4f);
    data.SetLong(RS_BACKGROUND, RS_BACKGROUND_NONE);
    data.SetBool(RS_EXTRA_ATMOSPHERIC, false);
    data.SetBool(RS_SPLIT_SUN_SKY, false);
    data.SetBool(RS_CAPTURED_SKY, true);
}

/// RS_SET_OUTPUT, RS_OUTPUT_FILE and RS_OUTPUT_IN_RENDERS have no initial value.
void initOutput(BaseContainer& data) {
    data.SetBool(RS_SAVE_QZI, true);
    data.SetBool(RS_SAVE_PNG, true);
    data.SetBool(RS_SAVE_UNTONEMAPPED_EXR, false);
    data.SetBool(RS_SAVE_TONEMAPPED_EXR, false);
    data.SetReal(RS_DISPLAY_PERIOD, 1800.0f);
    data.SetReal(RS_IMAGE_SAVE_PERIOD, 3600.0f);
    data.SetFilename(RS_EXPORT_FILE, Filename());
    data.SetBool(RS_EXPORT_NEXT_TO_DOC, false);
    data.SetBool(RS_EXPORT_TO_FILE, false);
    data.SetBool(RS_ANIMATION, false);
}

void initSystem(BaseContainer& data) {
    data.SetBool(RS_LOGGING, true);
    data.SetLong(RS_NUM_THREADS, GeGetCurrentOptimalThreads());
    data.SetBool(RS_AUTO_THREADS, true);
    data.SetBool(RS_CACHE_TREES, true);
    data.SetLong(RS_BIH_TRI_THRESHOLD, 800);
    data.SetBool(RS_VERBOSE, false);
    data.SetBool(RS_LOW_PRIORITY, true);
    data.SetBool(RS_CONSOLE, false);
    data.SetBool(RS_NETWORK, false);
    data.SetLong(RS_NETWORK_PORT, 7100);
    data.SetBool(RS_WAIT_FOR_SLAVES, false);
    data.SetBool(RS_RESERVED_1359, false);
    data.SetBool(RS_RESERVED_1361, false);
    data.SetBool(RS_RESERVED_1433, false);
}

void listDevices(BaseList2D& node, Description& description) {
    BaseContainer* const properties = description.GetParameterI(RS_GPU_DEVICE);
    if (!properties || !node.GetDocument()) {
        return;
    }
    BaseContainer cycle;
    for (const GpuDevice& device : gpuDevices()) {
        const char* const kind = device.kind == GPU_KIND_CUDA ? " CUDA" : " OpenCL";
        cycle.SetString(cycle.GetCount(), device.name + kind);
    }
    properties->SetContainer(DESC_CYCLE, cycle);
    BaseContainer* const data = node.GetDataInstance();
    const int32_t chosen = data->GetLong(RS_GPU_DEVICE);
    if (chosen < 0 || chosen > cycle.GetCount()) {
        data->SetLong(RS_GPU_DEVICE, 0);
    }
}

void hideWhatDoesNotApply(const BaseContainer& data, Description& description) {
    if (pluginState().isRTEdition) {
        for (const int32_t id :
             {RS_GROUP_NETWORK, RS_GROUP_LAYERS, RS_SAVE_UNTONEMAPPED_EXR, RS_SAVE_TONEMAPPED_EXR}) {
            description.Hide(id, true);
        }
    }
    description.Hide(RS_CUSTOM_UNIT_SCALE, data.GetLong(RS_UNIT, RS_UNIT_CM) != RS_UNIT_CUSTOM);
    const int32_t background = data.GetLong(RS_BACKGROUND, RS_BACKGROUND_NONE);
    description.Hide(RS_GROUP_SUN_SKY, background != RS_BACKGROUND_SUN_SKY);
    description.Hide(RS_GROUP_BACKGROUND_MATERIAL, background != RS_BACKGROUND_MATERIAL);
    description.Hide(RS_NUM_THREADS, data.GetLong(RS_AUTO_THREADS) == 1);
    description.Hide(RS_RESERVED_1433, true);
}

bool isMetropolis(int32_t mode) {
    return mode == RS_MODE_MLT_PATH || mode == RS_MODE_MLT_BIDIRECTIONAL;
}

void warnOfDarkBackground(const BaseList2D* background) {
    if (!background || background->GetDataInstance()->GetBool(MAT_EMISSION_ENABLED)) {
        return;
    }
    showOnMainThread("Warning:\nBackground materials must have emission enabled.");
}

} // namespace

bool RenderSettingsPost::Init(BaseList2D* node) {
    BaseContainer& data = *node->GetDataInstance();
    initSampling(data);
    initScene(data);
    initBackground(data);
    initOutput(data);
    initSystem(data);
    return true;
}

bool RenderSettingsPost::GetDDescription(BaseList2D* node, Description* description, int32_t& flags) {
    if (!loadOwnDescription(description, PLUGINID_RENDER_SETTINGS, flags)) {
        return false;
    }
    listDevices(*node, *description);
    hideWhatDoesNotApply(*node->GetDataInstance(), *description);
    return true;
}

bool RenderSettingsPost::GetDEnabling(BaseList2D* node, const DescID& id) {
    const BaseContainer* const data = node->GetDataInstance();
    switch (id[0]) {
    case RS_TURBIDITY:
    case RS_EXTRA_ATMOSPHERIC:
        return !data->GetBool(RS_CAPTURED_SKY);
    case RS_MAX_REJECTIONS:
    case RS_LARGE_MUTATION_PROB:
    case RS_MAX_CHANGE:
        return isMetropolis(data->GetLong(RS_MODE, RS_MODE_MLT_BIDIRECTIONAL));
    case RS_MODE:
        return !data->GetBool(RS_GPU);
    case RS_RESERVED_1361:
        return false;
    case RS_EXPORT_FILE:
        return data->GetBool(RS_EXPORT_TO_FILE) && !data->GetBool(RS_EXPORT_NEXT_TO_DOC);
    case RS_EXPORT_NEXT_TO_DOC:
        return data->GetBool(RS_EXPORT_TO_FILE);
    case RS_OUTPUT_FILE:
        return data->GetBool(RS_SET_OUTPUT) && !data->GetBool(RS_OUTPUT_IN_RENDERS);
    case RS_OUTPUT_IN_RENDERS:
        return data->GetBool(RS_EXPORT_TO_FILE) && data->GetBool(RS_SET_OUTPUT);
    case RS_DEFAULT_MATERIAL_COLOUR:
        return data->GetBool(RS_OVERRIDE_DEFAULT_MATERIAL);
    case RS_GPU_DEVICE:
        return data->GetBool(RS_GPU);
    default:
        return true;
    }
}

bool RenderSettingsPost::SetDParameter(BaseList2D* node, const DescID& id, GeData& value) {
    if (id[0] == RS_BACKGROUND_LINK) {
        warnOfDarkBackground(value.GetLink(node->GetDocument()));
    } else if (id[0] == RS_GPU && value.GetBool()) {
        node->GetDataInstance()->SetLong(RS_MODE, RS_MODE_PATH);
    }
    return VideoPostData::SetDParameter(node, id, value);
}

bool RenderSettingsPost::Message(BaseList2D* node, int32_t type, void* data) {
    if (type == MSG_RENDER_PREPARE && !data) {
        BaseList2D* const background =
            node->GetDataInstance()->GetLink(RS_BACKGROUND_LINK, node->GetDocument());
        if (background) {
            background->SetBit(BIT_LEFT_OUT);
        }
    }
    return VideoPostData::Message(node, type, data);
}
