// SPDX-License-Identifier: MIT
#include "materials/material_bodies.h"

#include "host/material.h"
#include "materials/base_emission.h"
#include "materials/channel_export.h"
#include "materials/medium_export.h"
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
#include "scene/wavelength_independent_param.h"
#include "shared/export_context.h"
#include "shared/light_layers.h"
#include "shared/parameter_ids.h"
#include "shared/spectra.h"
#include "shared/text.h"

using namespace Quenza;

namespace {

/// What the bodies of all kinds are made with.
struct BodyMaker {
    const BaseContainer& data;
    const ::String& name;
    ExportContext& context;

    ChannelExporter channels(Material& body) const { return {data, name, body.textures, context}; }

    void addRelief(SurfaceMaterial& body, ChannelExporter& channels) const {
        channels.fill(body.bump, ChannelId::BUMP);
        channels.fill(body.normal_map, ChannelId::NORMAL_MAP);
        channels.fill(body.displacement, ChannelId::DISPLACEMENT);
    }

    void addEmission(SurfaceMaterial& body, ChannelExporter& channels) const {
        body.base_emission = exportBaseEmission(data);
        channels.fill(body.emission, ChannelId::EMISSION);
    }

    void addReliefAndEmission(SurfaceMaterial& body, ChannelExporter& channels) const {
        addRelief(body, channels);
        addEmission(body, channels);
    }

    void addLayer(SurfaceMaterial& body) const {
        if (data.GetBool(MAT_EMISSION_ENABLED)) {
            body.layer = layerIndex(context, data.GetLong(MAT_EMISSION_LAYER));
        }
    }

    double real(int32_t id, float preset = 0.0f) const { return double(data.GetReal(id, preset)); }
};

Ref<SurfaceMaterial> makeDiffuse(const BodyMaker& maker) {
    const Ref<DiffuseMaterial> body = new DiffuseMaterial;
    ChannelExporter channels = maker.channels(*body);
    channels.fill(body->albedo, ChannelId::ALBEDO);
    maker.addReliefAndEmission(*body, channels);
    return body;
}

Ref<SurfaceMaterial> makeOrenNayar(const BodyMaker& maker) {
    const Ref<OrenNayarMaterial> body = new OrenNayarMaterial;
    ChannelExporter channels = maker.channels(*body);
    channels.fill(body->sigma, ChannelId::SIGMA);
    channels.fill(body->albedo, ChannelId::ALBEDO);
    maker.addReliefAndEmission(*body, channels);
    return body;
}

/// The clay of the render settings, which keeps the material's own relief and light.
Ref<SurfaceMaterial> makeClay(const BodyMaker& maker) {
    constexpr float GAMMA = 2.2f;
    constexpr double SIGMA = 0.3;
    const Ref<OrenNayarMaterial> body = new OrenNayarMaterial;
    ChannelExporter channels = maker.channels(*body);
    body->albedo = constantParam(makeRGBSpectrum(maker.context.overrideColour, GAMMA, 1.0f));
    body->sigma = new ConstantWavelengthIndependentParam(SIGMA);
    maker.addReliefAndEmission(*body, channels);
    return body;
}

/// Empty without measured data. The page resets an index that no name has to the first, and so does this.
Quenza::String nkData(const BaseContainer& data) {
    if (!data.GetBool(MAT_PHONG_USE_NK)) {
        return "";
    }
    const auto names = nkNames();
    const auto index = static_cast<uint32_t>(data.GetLong(MAT_PHONG_NK_INDEX));
    return Quenza::String("nkdata/") + names[index < names.size() ? index : 0];
}

Ref<SurfaceMaterial> makePhong(const BodyMaker& maker) {
    const Ref<PhongMaterial> body = new PhongMaterial;
    ChannelExporter channels = maker.channels(*body);
    body->nk_data = nkData(maker.data);
    body->ior = maker.real(MAT_PHONG_IOR);
    channels.fill(maker.data.GetBool(MAT_PHONG_SPECULAR) ? body->specular_reflectivity : body->diffuse_albedo,
                  ChannelId::ALBEDO);
    channels.fill(body->exponent, ChannelId::EXPONENT);
    maker.addReliefAndEmission(*body, channels);
    channels.fill(body->fresnel_scale, ChannelId::FRESNEL_SCALE);
    return body;
}

Ref<SurfaceMaterial> makeDiffuseTransmitter(const BodyMaker& maker, SceneNodeUID medium) {
    const Ref<DiffuseTransmitter> body = new DiffuseTransmitter;
    ChannelExporter channels = maker.channels(*body);
    body->internal_medium_uid = medium;
    channels.fill(body->albedo, ChannelId::ALBEDO);
    maker.addReliefAndEmission(*body, channels);
    return body;
}

Ref<SurfaceMaterial> makeSpecular(const BodyMaker& maker, SceneNodeUID medium) {
    const Ref<SpecularMaterial> body = new SpecularMaterial;
    ChannelExporter channels = maker.channels(*body);
    body->internal_medium_uid = medium;
    body->transparent = maker.data.GetBool(MAT_SPECULAR_TRANSPARENT);
    maker.addReliefAndEmission(*body, channels);
    channels.fill(body->absorption_layer_transmittance, ChannelId::ABSORPTION_LAYER);
    body->private_data = toSceneString(maker.data.GetString(MAT_SPECULAR_PRIVATE_DATA));
    return body;
}

Ref<SurfaceMaterial> makeGlossyTransparent(const BodyMaker& maker, SceneNodeUID medium) {
    const Ref<GlossyTransparent> body = new GlossyTransparent;
    ChannelExporter channels = maker.channels(*body);
    body->internal_medium_uid = medium;
    maker.addRelief(*body, channels);
    channels.fill(body->exponent, ChannelId::EXPONENT);
    maker.addEmission(*body, channels);
    channels.fill(body->absorption_layer_transmittance, ChannelId::ABSORPTION_LAYER);
    return body;
}

constexpr float LAYER_IOR = 1.5f;

Ref<SurfaceMaterial> makeCoating(const BodyMaker& maker, SceneNodeUID substrate) {
    const Ref<CoatingMaterial> body = new CoatingMaterial;
    ChannelExporter channels = maker.channels(*body);
    body->substrate_material_uid = substrate;
    body->ior = maker.real(MAT_COATING_IOR, LAYER_IOR);
    body->interference = maker.data.GetBool(MAT_COATING_INTERFERENCE);
    maker.addReliefAndEmission(*body, channels);
    channels.fill(body->absorption, ChannelId::COATING_ABSORPTION);
    channels.fill(body->fresnel_scale, ChannelId::FRESNEL_SCALE);
    channels.fill(body->roughness, ChannelId::ROUGHNESS);
    channels.fill(body->thickness, ChannelId::COATING_THICKNESS);
    return body;
}

Ref<SurfaceMaterial> makeDoubleSidedThin(const BodyMaker& maker, SceneNodeUID front, SceneNodeUID back) {
    const Ref<DoubleSidedThinMaterial> body = new DoubleSidedThinMaterial;
    ChannelExporter channels = maker.channels(*body);
    body->front_material_uid = front;
    body->back_material_uid = back;
    body->ior = maker.real(MAT_THIN_IOR, LAYER_IOR);
    maker.addReliefAndEmission(*body, channels);
    channels.fill(body->transmittance, ChannelId::TRANSMITTANCE);
    channels.fill(body->front_fresnel_scale, ChannelId::FRESNEL_SCALE);
    channels.fill(body->back_fresnel_scale, ChannelId::BACK_FRESNEL_SCALE);
    channels.fill(body->front_roughness, ChannelId::ROUGHNESS);
    channels.fill(body->back_roughness, ChannelId::BACK_ROUGHNESS);
    channels.fill(body->r_f, ChannelId::R_F);
    return body;
}

Ref<Material> makeBlend(const BodyMaker& maker, SceneNodeUID a, SceneNodeUID b) {
    const Ref<BlendMaterial> body = new BlendMaterial;
    ChannelExporter channels = maker.channels(*body);
    body->a_mat_uid = a;
    body->b_mat_uid = b;
    body->step_blend = maker.data.GetBool(MAT_BLEND_STEP);
    channels.fill(body->blend, ChannelId::BLEND);
    return body;
}

/// Null for a kind without a surface of its own and for one that isn't known.
Ref<SurfaceMaterial> makeSurface(const MaterialSource& source, const BodyMaker& maker,
                                 const std::vector<SceneNodeUID>& references, SceneNodeRoot& root) {
    const auto medium = [&] {
        return exportMedium(source.material, maker.name, root, maker.context, source.key);
    };
    switch (source.kind) {
    case MAT_KIND_DIFFUSE:
        return makeDiffuse(maker);
    case MAT_KIND_ORENNAYAR:
        return makeOrenNayar(maker);
    case MAT_KIND_PHONG:
        return makePhong(maker);
    case MAT_KIND_DIFFUSE_TRANSMITTER:
        return makeDiffuseTransmitter(maker, maker.data.GetBool(MAT_MEDIUM_ENABLED, true) ? medium()
                                                                                          : SceneNodeUID());
    case MAT_KIND_SPECULAR:
        return makeSpecular(maker, medium());
    case MAT_KIND_GLOSSY_TRANSPARENT:
        return makeGlossyTransparent(maker, medium());
    case MAT_KIND_COATING:
        return makeCoating(maker, references[0]);
    case MAT_KIND_DOUBLE_SIDED_THIN:
        return makeDoubleSidedThin(maker, references[0], references[1]);
    default:
        return nullptr;
    }
}

} // namespace

std::vector<MaterialReference> bodyReferences(const MaterialSource& source) {
    if (source.isClay) {
        return {};
    }
    switch (source.kind) {
    case MAT_KIND_BLEND:
        return {{MAT_BLEND_MATERIAL_A, true}, {MAT_BLEND_MATERIAL_B, true}};
    case MAT_KIND_COATING:
        return {{MAT_COATING_SUBSTRATE, false}};
    case MAT_KIND_DOUBLE_SIDED_THIN:
        return {{MAT_THIN_FRONT, false}, {MAT_THIN_BACK, false}};
    default:
        return {};
    }
}

Ref<Material> makeBody(const MaterialSource& source, const ::String& name,
                       const std::vector<SceneNodeUID>& references, SceneNodeRoot& root,
                       ExportContext& context) {
    const BodyMaker maker{*source.material->GetDataInstance(), name, context};
    if (!source.isClay && source.kind == MAT_KIND_BLEND) {
        return makeBlend(maker, references[0], references[1]);
    }
    if (!source.isClay && source.kind == MAT_KIND_NULL) {
        return new NullMaterial;
    }
    const Ref<SurfaceMaterial> body =
        source.isClay ? makeClay(maker) : makeSurface(source, maker, references, root);
    if (body) {
        maker.addLayer(*body);
        body->backface_emit = maker.data.GetBool(MAT_BACKFACE_EMIT);
    }
    return body;
}

Ref<Material> makeMixBody(const MaterialSource& source, const ::String& name, SceneNodeUID a, SceneNodeUID b,
                          ExportContext& context) {
    return makeBlend({*source.material->GetDataInstance(), name, context}, a, b);
}

Ref<Material> makeBackgroundBody(const BaseMaterial* material, const ::String& name, ExportContext& context) {
    const BodyMaker maker{*material->GetDataInstance(), name, context};
    const Ref<DiffuseMaterial> body = new DiffuseMaterial;
    ChannelExporter channels = maker.channels(*body);
    maker.addEmission(*body, channels);
    maker.addLayer(*body);
    body->name = toSceneString(name);
    return body;
}
