// SPDX-License-Identifier: MIT
#include "materials/quenza_material.h"

#include "host/document.h"
#include "host/ids.h"
#include "materials/channels.h"
#include "materials/material_defaults.h"
#include "materials/material_description.h"
#include "materials/material_enabling.h"
#include "materials/material_kinds.h"
#include "materials/material_update.h"
#include "shared/described_data.h"
#include "shared/plugin_ids.h"

namespace {

/// The order in which a message reaches the channels' shaders.
constexpr ChannelId MESSAGE_ORDER[] = {
    ChannelId::ALBEDO,
    ChannelId::BUMP,
    ChannelId::NORMAL_MAP,
    ChannelId::DISPLACEMENT,
    ChannelId::EMISSION,
    ChannelId::EXPONENT,
    ChannelId::SIGMA,
    ChannelId::ABSORPTION_LAYER,
    ChannelId::BLEND,
    ChannelId::COATING_ABSORPTION,
    ChannelId::COATING_THICKNESS,
    ChannelId::ROUGHNESS,
    ChannelId::FRESNEL_SCALE,
    ChannelId::BACK_FRESNEL_SCALE,
    ChannelId::BACK_ROUGHNESS,
    ChannelId::TRANSMITTANCE,
    ChannelId::R_F,
};

/// Looks that show this one are out of date as well.
void updateReferencing(BaseMaterial* material) {
    for (BaseMaterial* const user : findReferencing(material)) {
        user->Message(MSG_UPDATE);
    }
}

void exchangeLinks(BaseList2D& node, const MaterialExchange& exchange) {
    BaseContainer& data = *node.GetDataInstance();
    for (const int32_t link : materialLinks()) {
        const BaseList2D* const target = data.GetLink(link, nullptr);
        if (target && target == exchange.oldMaterial) {
            data.SetLink(link, exchange.newMaterial);
        }
    }
}

void markUsed(const BaseList2D& node) {
    const BaseContainer& data = *node.GetDataInstance();
    for (const MaterialLink& entry : usedLinks(data.GetLong(MAT_KIND, MAT_KIND_DIFFUSE))) {
        BaseList2D* const target = data.GetLink(entry.link, node.GetDocument(), Mbase);
        if (target && entry.counts(data)) {
            target->SetBit(BIT_MATERIALUSED);
        }
    }
}

} // namespace

bool QuenzaMaterial::Init(BaseList2D* node) {
    BaseContainer* const data = node->GetDataInstance();
    if (!data) {
        return false;
    }
    initMaterial(*data);
    shading_.free();
    invalidations_ = 0;
    return updateMaterial(static_cast<BaseMaterial*>(node));
}

bool QuenzaMaterial::Message(BaseList2D* node, int32_t type, void* data) {
    if (!node->GetDataInstance()) {
        return false;
    }
    for (const ChannelId id : MESSAGE_ORDER) {
        HandleShaderMessage(node, channel(id).shader, type, data);
    }
    if (MaterialPreview::isMessage(type)) {
        return preview_.answer(*static_cast<const BaseMaterial*>(node), type, data);
    }
    switch (type) {
    case MSG_UPDATE:
        ++invalidations_;
        break;
    case MSG_DESCRIPTION_VALIDATE:
        updateMaterial(static_cast<BaseMaterial*>(node));
        break;
    case MSG_DESCRIPTION_POSTSETPARAMETER:
        updateReferencing(static_cast<BaseMaterial*>(node));
        break;
    case MSG_RENDER_PREPARE:
        if (data) {
            exchangeLinks(*node, *static_cast<const MaterialExchange*>(data));
        } else {
            markUsed(*node);
        }
        break;
    default:
        break;
    }
    return MaterialData::Message(node, type, data);
}

bool QuenzaMaterial::GetDDescription(BaseList2D* node, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_MATERIAL, flags) && describeMaterial(*node, *description);
}

bool QuenzaMaterial::GetDEnabling(BaseList2D* node, const DescID& id) {
    return isMaterialParameterEnabled(*node, id[0]);
}

int32_t QuenzaMaterial::InitRender(BaseMaterial* material, const InitRenderStruct& init) {
    return shading_.init(*material, init);
}

void QuenzaMaterial::FreeRender(BaseMaterial* /*material*/) {
    shading_.free();
}

void QuenzaMaterial::CalcSurface(BaseMaterial* /*material*/, VolumeData* volume) {
    shading_.calcSurface(*volume);
}

void QuenzaMaterial::CalcTransparency(BaseMaterial* /*material*/, VolumeData* volume) {
    shading_.calcTransparency(*volume);
}

bool QuenzaMaterial::InitGLImage(BaseMaterial* material, BaseDocument* document, BaseThread* /*thread*/,
                                 BaseBitmap* bitmap) {
    return bitmap && drawAlbedo(*material, document, *bitmap);
}
