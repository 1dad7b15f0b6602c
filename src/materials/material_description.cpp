// SPDX-License-Identifier: MIT
#include "materials/material_description.h"

#include "host/description.h"
#include "host/document.h"
#include "materials/channel_description.h"
#include "materials/channels.h"
#include "materials/material_kinds.h"
#include "materials/nk_names.h"
#include "materials/spectrum_numbers.h"
#include "shared/export_context.h"
#include "shared/plugin_state.h"

namespace {

void describeNumberedChannels(const BaseContainer& data, Description& description) {
    for (const Channel& entry : channels()) {
        if (entry.base == 0) {
            continue;
        }
        describeNumberedChannel(entry, description);
        if (entry.constant == ConstantForm::SPECTRUM) {
            showChannelSpectrum(entry, data, description);
        }
    }
}

/// Layers have the names that the render settings of the document give them.
void listLayers(BaseDocument* document, Description& description) {
    BaseContainer* const properties = description.GetParameterI(MAT_EMISSION_LAYER);
    if (!properties) {
        return;
    }
    const BaseContainer* const settings = document ? findVideoPost(document) : nullptr;
    BaseContainer layers;
    for (int32_t layer = 0; layer <= RS_LAYER_NAME_10 - RS_LAYER_NAME_1; ++layer) {
        const String preset = String("Layer ") + LongToString(layer + 1);
        layers.SetString(layer, settings ? settings->GetString(RS_LAYER_NAME_1 + layer, preset) : preset);
    }
    properties->SetContainer(DESC_CYCLE, layers);
}

/// Old documents name the file of a metal, and other versions of the list may have been longer.
void correctNkIndex(BaseContainer& data) {
    const String file = data.GetString(MAT_PHONG_NK_FILE);
    if (file.Content()) {
        const int index = findNkName(file.GetCString());
        if (index >= 0) {
            data.SetLong(MAT_PHONG_NK_INDEX, index);
            data.RemoveData(MAT_PHONG_NK_FILE);
        }
    }
    const int32_t index = data.GetLong(MAT_PHONG_NK_INDEX);
    if (index < 0 || index >= static_cast<int32_t>(nkNames().size())) {
        data.SetLong(MAT_PHONG_NK_INDEX, 0);
    }
}

void listMetals(Description& description) {
    BaseContainer* const properties = description.GetParameterI(MAT_PHONG_NK_INDEX);
    if (!properties) {
        return;
    }
    BaseContainer metals;
    for (const char* const name : nkNames()) {
        metals.InsData(metals.GetCount(), GeData(name));
    }
    properties->SetContainer(DESC_CYCLE, metals);
}

void showChannelsOfKind(const BaseContainer& data, Description& description) {
    const KindInfo* const kind = kindInfo(data.GetLong(MAT_KIND, MAT_KIND_DIFFUSE));
    if (!kind) {
        return;
    }
    for (const FlagGroup& entry : flagGroups()) {
        const bool hasChannel = kind->hasChannel(entry.flag);
        description.Hide(entry.flag, !hasChannel);
        description.Hide(entry.group, !hasChannel || !data.GetBool(entry.flag, true));
    }
    // A Blend has a second material of its own; the others are mixed with one.
    description.Hide(MAT_BLEND_MATERIAL_B, kind->kind != MAT_KIND_BLEND);
}

} // namespace

bool describeMaterial(BaseList2D& material, Description& description) {
    BaseContainer* const data = material.GetDataInstance();
    if (!data) {
        return false;
    }
    listLayers(material.GetDocument(), description);
    describeNumberedChannels(*data, description);
    for (const SpectrumNumbers& spectrum : {EMISSION_SPECTRUM, ABSORPTION_SPECTRUM, SCATTERING_SPECTRUM}) {
        showSpectrumType(spectrum, *data, description);
    }
    showChannelsOfKind(*data, description);
    correctNkIndex(*data);
    listMetals(description);
    if (pluginState().isRTEdition) {
        for (const int32_t id :
             {MAT_GROUP_SUBSURFACE, MAT_MEDIUM_SUBSURFACE, MAT_EMISSION_LAYER, MAT_USE_IES, MAT_IES_FILE}) {
            description.Hide(id, true);
        }
    }
    return true;
}
