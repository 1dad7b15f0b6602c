// SPDX-License-Identifier: MIT
#include "materials/import_body.h"

#include "foundation/file_utils.h"
#include "host/material.h"
#include "materials/import_channels.h"
#include "materials/import_medium.h"
#include "materials/nk_names.h"
#include "scene/materials/blend_material.h"
#include "scene/materials/coating_material.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/diffuse_transmitter.h"
#include "scene/materials/double_sided_thin_material.h"
#include "scene/materials/glossy_transparent.h"
#include "scene/materials/null_material.h"
#include "scene/materials/oren_nayar_material.h"
#include "scene/materials/phong_material.h"
#include "scene/materials/specular_material.h"
#include "scene/scene_node_medium.h"
#include "shared/text.h"

using namespace Quenza;

namespace {

/// What the bodies of all kinds are taken with.
struct BodyTaker {
    BaseContainer& data;
    ChannelImporter& channels;

    void common(const SurfaceMaterial& body) const {
        channels.take(body.bump, ChannelId::BUMP);
        channels.take(body.displacement, ChannelId::DISPLACEMENT);
        channels.take(body.normal_map, ChannelId::NORMAL_MAP);
        channels.takeBaseEmission(body.base_emission);
        channels.take(body.emission, ChannelId::EMISSION);
        data.SetLong(MAT_EMISSION_LAYER, body.layer);
    }

    void medium(const Ref<SceneNodeMedium>& node) const {
        if (node) {
            importMedium(data, node->medium.getPointer());
        }
    }
};

void take(const BodyTaker& taker, const DiffuseMaterial& body) {
    taker.data.SetLong(MAT_KIND, MAT_KIND_DIFFUSE);
    taker.channels.take(body.albedo, ChannelId::ALBEDO);
    taker.common(body);
}

void take(const BodyTaker& taker, const OrenNayarMaterial& body) {
    taker.data.SetLong(MAT_KIND, MAT_KIND_ORENNAYAR);
    taker.channels.take(body.albedo, ChannelId::ALBEDO);
    taker.channels.take(body.sigma, ChannelId::SIGMA);
    taker.common(body);
}

/// Paths in files come with either separator.
Quenza::String nkFileName(const Quenza::String& path) {
    const std::string_view text = path.view();
    const size_t separator = text.find_last_of("/\\");
    return Quenza::String(separator == std::string_view::npos ? text : text.substr(separator + 1));
}

void take(const BodyTaker& taker, const PhongMaterial& body) {
    taker.data.SetLong(MAT_KIND, MAT_KIND_PHONG);
    taker.channels.take(body.diffuse_albedo, ChannelId::ALBEDO);
    if (body.specular_reflectivity) {
        taker.channels.take(body.specular_reflectivity, ChannelId::ALBEDO);
        taker.data.SetBool(MAT_PHONG_SPECULAR, true);
    }
    taker.channels.take(body.exponent, ChannelId::EXPONENT);
    if (!body.nk_data.empty()) {
        taker.data.SetBool(MAT_PHONG_USE_NK, true);
        const int index = findNkName(nkFileName(body.nk_data).toStdString().c_str());
        if (index >= 0) {
            taker.data.SetLong(MAT_PHONG_NK_INDEX, index);
        }
    }
    taker.data.SetReal(MAT_PHONG_IOR, float(body.ior));
    taker.common(body);
}

void take(const BodyTaker& taker, const DiffuseTransmitter& body) {
    taker.data.SetLong(MAT_KIND, MAT_KIND_DIFFUSE_TRANSMITTER);
    taker.channels.take(body.albedo, ChannelId::ALBEDO);
    taker.common(body);
    taker.medium(body.internal_medium);
}

void take(const BodyTaker& taker, const SpecularMaterial& body) {
    taker.data.SetLong(MAT_KIND, MAT_KIND_SPECULAR);
    taker.data.SetBool(MAT_SPECULAR_TRANSPARENT, body.transparent);
    taker.medium(body.internal_medium);
    taker.common(body);
    taker.channels.take(body.absorption_layer_transmittance, ChannelId::ABSORPTION_LAYER);
    if (!body.private_data.empty()) {
        taker.data.SetString(MAT_SPECULAR_PRIVATE_DATA, toHostString(body.private_data));
    }
}

void take(const BodyTaker& taker, const GlossyTransparent& body) {
    taker.data.SetLong(MAT_KIND, MAT_KIND_GLOSSY_TRANSPARENT);
    taker.channels.take(body.exponent, ChannelId::EXPONENT);
    taker.medium(body.internal_medium);
    taker.common(body);
    taker.channels.take(body.absorption_layer_transmittance, ChannelId::ABSORPTION_LAYER);
}

void take(const BodyTaker& taker, const BlendMaterial& body) {
    taker.data.SetLong(MAT_KIND, MAT_KIND_BLEND);
    taker.channels.take(body.blend, ChannelId::BLEND);
    taker.data.SetBool(MAT_BLEND_STEP, body.step_blend);
}

void take(const BodyTaker& taker, const CoatingMaterial& body) {
    taker.data.SetLong(MAT_KIND, MAT_KIND_COATING);
    taker.data.SetReal(MAT_COATING_IOR, float(body.ior));
    taker.data.SetBool(MAT_COATING_INTERFERENCE, body.interference);
    taker.channels.take(body.absorption, ChannelId::COATING_ABSORPTION);
    taker.channels.take(body.fresnel_scale, ChannelId::FRESNEL_SCALE);
    taker.channels.take(body.roughness, ChannelId::ROUGHNESS);
    taker.channels.take(body.thickness, ChannelId::COATING_THICKNESS);
    taker.common(body);
}

void take(const BodyTaker& taker, const DoubleSidedThinMaterial& body) {
    taker.data.SetLong(MAT_KIND, MAT_KIND_DOUBLE_SIDED_THIN);
    taker.data.SetReal(MAT_THIN_IOR, float(body.ior));
    taker.channels.take(body.transmittance, ChannelId::TRANSMITTANCE);
    taker.channels.take(body.front_fresnel_scale, ChannelId::FRESNEL_SCALE);
    taker.channels.take(body.back_fresnel_scale, ChannelId::BACK_FRESNEL_SCALE);
    taker.channels.take(body.front_roughness, ChannelId::ROUGHNESS);
    taker.channels.take(body.back_roughness, ChannelId::BACK_ROUGHNESS);
    taker.channels.take(body.r_f, ChannelId::R_F);
    taker.common(body);
}

/// Calls `call` with the body as its own class. False for a class that can't be imported.
template <class Call>
bool withBody(const Material& body, const Call& call) {
    switch (body.getType()) {
    case BlendMaterial::TYPE:
        call(static_cast<const BlendMaterial&>(body));
        return true;
    case DiffuseMaterial::TYPE:
        call(static_cast<const DiffuseMaterial&>(body));
        return true;
    case DiffuseTransmitter::TYPE:
        call(static_cast<const DiffuseTransmitter&>(body));
        return true;
    case OrenNayarMaterial::TYPE:
        call(static_cast<const OrenNayarMaterial&>(body));
        return true;
    case PhongMaterial::TYPE:
        call(static_cast<const PhongMaterial&>(body));
        return true;
    case SpecularMaterial::TYPE:
        call(static_cast<const SpecularMaterial&>(body));
        return true;
    case GlossyTransparent::TYPE:
        call(static_cast<const GlossyTransparent&>(body));
        return true;
    case CoatingMaterial::TYPE:
        call(static_cast<const CoatingMaterial&>(body));
        return true;
    case DoubleSidedThinMaterial::TYPE:
        call(static_cast<const DoubleSidedThinMaterial&>(body));
        return true;
    default:
        return false;
    }
}

} // namespace

bool isImportable(const Material& body) {
    return withBody(body, [](const Material&) {});
}

bool isNull(const Material& body) {
    return body.getType() == NullMaterial::TYPE;
}

std::vector<MaterialLinkOfBody> listReferences(const Material& body) {
    switch (body.getType()) {
    case BlendMaterial::TYPE: {
        const auto& blend = static_cast<const BlendMaterial&>(body);
        return {{MAT_BLEND_MATERIAL_A, blend.a_mat.getPointer()},
                {MAT_BLEND_MATERIAL_B, blend.b_mat.getPointer()}};
    }
    case CoatingMaterial::TYPE:
        return {{MAT_COATING_SUBSTRATE,
                 static_cast<const CoatingMaterial&>(body).substrate_material.getPointer()}};
    case DoubleSidedThinMaterial::TYPE: {
        const auto& thin = static_cast<const DoubleSidedThinMaterial&>(body);
        return {{MAT_THIN_FRONT, thin.front_material.getPointer()},
                {MAT_THIN_BACK, thin.back_material.getPointer()}};
    }
    default:
        return {};
    }
}

void importBody(BaseMaterial& material, const Material& body, const Filename& directory,
                ImportWarnings& warnings) {
    ChannelImporter channels(material, body, directory, warnings);
    const BodyTaker taker{*material.GetDataInstance(), channels};
    withBody(body, [&taker](const auto& actual) { take(taker, actual); });
}
