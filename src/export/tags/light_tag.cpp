// SPDX-License-Identifier: MIT
#include "export/tags/light_tag.h"

#include "export/ies_preview.h"
#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"
#include "shared/plugin_state.h"

bool LightTag::Init(BaseList2D* node) {
    BaseContainer* const data = node->GetDataInstance();
    data->SetLong(LIGHT_SPECTRUM, LIGHT_SPECTRUM_RGB);
    data->SetReal(LIGHT_BLACKBODY_TEMPERATURE, 6500.0f);
    data->SetReal(LIGHT_BLACKBODY_GAIN, 1.0f);
    data->SetReal(LIGHT_UNIFORM_VALUE, 1.0f);
    data->SetVector(LIGHT_RGB_COLOUR, Vector(1.0f, 1.0f, 1.0f));
    data->SetReal(LIGHT_RGB_GAMMA, 2.2f);
    data->SetReal(LIGHT_PEAK_LOW, 300.0f);
    data->SetReal(LIGHT_PEAK_WIDTH, 550.0f);
    data->SetReal(LIGHT_PEAK_VALUE, 200.0f);
    data->SetReal(LIGHT_PEAK_BASE, 0.0f);
    data->SetLong(LIGHT_EMISSION_SCALE_MEASURE, LIGHT_MEASURE_LUMINANCE);
    data->SetReal(LIGHT_EMISSION_SCALE_VALUE, 100.0f);
    data->SetBool(LIGHT_USE_IES, false);
    data->SetFilename(LIGHT_IES_FILE, Filename());
    data->SetBool(LIGHT_USE_EMISSION_SCALE, false);
    data->SetLong(LIGHT_LAYER, LIGHT_LAYER_1);
    return true;
}

bool LightTag::GetDDescription(BaseList2D* node, Description* description, int32_t& flags) {
    if (!loadOwnDescription(description, PLUGINID_LIGHT_TAG, flags)) {
        return false;
    }
    static constexpr struct {
        int32_t group;
        int32_t spectrum;
    } SPECTRUM_GROUPS[] = {{LIGHT_GROUP_PEAK, LIGHT_SPECTRUM_PEAK},
                           {LIGHT_GROUP_RGB, LIGHT_SPECTRUM_RGB},
                           {LIGHT_GROUP_BLACKBODY, LIGHT_SPECTRUM_BLACKBODY},
                           {LIGHT_GROUP_UNIFORM, LIGHT_SPECTRUM_UNIFORM}};
    const int32_t spectrum = node->GetDataInstance()->GetLong(LIGHT_SPECTRUM, LIGHT_SPECTRUM_RGB);
    for (const auto& entry : SPECTRUM_GROUPS) {
        description->Hide(entry.group, entry.spectrum != spectrum);
    }
    // The realtime edition mixes no light layers.
    description->Hide(LIGHT_LAYER, pluginState().isRTEdition);
    description->Hide(LIGHT_GROUP_LAYER, pluginState().isRTEdition);
    return true;
}

bool LightTag::Message(BaseList2D* node, int32_t type, void* data) {
    if (type == MSG_DESCRIPTION_COMMAND && data &&
        static_cast<const DescriptionCommand*>(data)->id[0] == LIGHT_IES_PREVIEW) {
        showIESPreview(*node);
    }
    return true;
}

bool LightTag::GetDEnabling(BaseList2D* node, const DescID& id) {
    const BaseContainer* const data = node->GetDataInstance();
    switch (id[0]) {
    case LIGHT_IES_FILE:
        return data->GetBool(LIGHT_USE_IES);
    case LIGHT_EMISSION_SCALE_MEASURE:
    case LIGHT_EMISSION_SCALE_VALUE:
        return data->GetBool(LIGHT_USE_EMISSION_SCALE);
    default:
        return true;
    }
}
