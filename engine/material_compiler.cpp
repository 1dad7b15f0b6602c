// SPDX-License-Identifier: MIT
#include "engine/material_compiler.h"

#include "engine/fresnel.h"
#include "engine/material_param.h"
#include "scene/materials/blend_material.h"
#include "scene/materials/coating_material.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/diffuse_transmitter.h"
#include "scene/materials/double_sided_thin_material.h"
#include "scene/materials/exit_portal_material.h"
#include "scene/materials/glossy_transparent.h"
#include "scene/materials/null_material.h"
#include "scene/materials/oren_nayar_material.h"
#include "scene/materials/phong_material.h"
#include "scene/materials/specular_material.h"
#include "scene/materials/sum_material.h"
#include "scene/materials/surface_material.h"
#include "scene/medium.h"
#include "scene/volume_param.h"

#include <algorithm>

namespace engine {

namespace {

using namespace Quenza;

/// A chain of materials that is longer is taken for one without an end.
constexpr int MAX_DEPTH = 100;
/// Reflectance of what the engine doesn't know.
constexpr float GREY = 0.5f;
/// A Phong exponent without a value: a soft highlight.
constexpr float DEFAULT_EXPONENT = 1000.0f;

void readSurface(const SurfaceMaterial& material, const ParamReader& params, PlainShader& shader) {
    if (material.base_emission) {
        shader.emission = params.radiance(material.base_emission);
        shader.emission_factor = params.factor(material.emission, 1.0f);
    } else if (material.emission) {
        shader.emission = params.radiance(material.emission);
    }
    shader.layer = u32(std::max(0, material.layer));
    shader.emits_back = material.backface_emit;
    shader.bump_map = params.texture(material.bump);
    shader.normal_map = params.texture(material.normal_map);
    if (material.displacement) {
        params.notices().tell("Displacement is not drawn; surfaces stay where their meshes are.");
    }
    if (material.shadow_catcher) {
        params.notices().tell("Shadow catchers are drawn as ordinary surfaces.");
    }
}

std::unique_ptr<DiffuseShader> makeDiffuse(const DiffuseMaterial& material, const ParamReader& params) {
    auto shader = std::make_unique<DiffuseShader>();
    shader->albedo = params.factor(material.albedo, 0.0f);
    shader->random_colours = material.random_triangle_colours;
    return shader;
}

std::unique_ptr<DiffuseShader> makeOrenNayar(const OrenNayarMaterial& material, const ParamReader& params) {
    auto shader = std::make_unique<DiffuseShader>();
    shader->kind = Lobe::Kind::OREN_NAYAR;
    shader->albedo = params.factor(material.albedo, 0.0f);
    shader->sigma = params.number(material.sigma, 0.3f);
    return shader;
}

std::unique_ptr<PhongShader> makePhong(const PhongMaterial& material, const ParamReader& params) {
    auto shader = std::make_unique<PhongShader>();
    shader->exponent = params.number(material.exponent, DEFAULT_EXPONENT);
    shader->fresnel_scale = params.number(material.fresnel_scale, 1.0f);
    shader->ior = std::max(1.0f, float(material.ior));
    shader->average = fresnelAverage(shader->ior);
    shader->metal = material.specular_reflectivity.nonNull() || !material.nk_data.empty();
    if (!material.nk_data.empty()) {
        params.notices().tell("Measured metals (nk_data) are drawn as a neutral grey metal.");
        shader->colour = {RGB{GREY}, nullptr};
    } else if (shader->metal) {
        shader->colour = params.factor(material.specular_reflectivity, 0.0f);
    } else {
        shader->colour = params.factor(material.diffuse_albedo, 0.0f);
    }
    return shader;
}

std::unique_ptr<GlassShader> makeSpecular(const SpecularMaterial& material, const ParamReader& params) {
    auto shader = std::make_unique<GlassShader>();
    shader->transparent = material.transparent;
    shader->layer_transmittance = params.factor(material.absorption_layer_transmittance, 1.0f);
    if (material.tabulated_external_reflection_coefficient ||
        material.tabulated_internal_reflection_coefficient || material.tabulated_transmission_coefficient) {
        params.notices().tell("Tabulated coefficients of specular materials are not looked at.");
    }
    return shader;
}

std::unique_ptr<GlassShader> makeGlossyTransparent(const GlossyTransparent& material,
                                                   const ParamReader& params) {
    auto shader = std::make_unique<GlassShader>();
    shader->rough = true;
    shader->exponent = params.number(material.exponent, DEFAULT_EXPONENT);
    shader->layer_transmittance = params.factor(material.absorption_layer_transmittance, 1.0f);
    return shader;
}

std::unique_ptr<CoatingShader> makeCoating(const CoatingMaterial& material, const ParamReader& params) {
    auto shader = std::make_unique<CoatingShader>();
    shader->absorption = params.factor(material.absorption, 0.0f);
    shader->thickness = params.number(material.thickness, 0.0f);
    shader->roughness = params.number(material.roughness, 0.1f);
    shader->fresnel_scale = params.number(material.fresnel_scale, 1.0f);
    shader->ior = std::max(1.0f, float(material.ior));
    if (material.interference) {
        params.notices().tell("Coatings are drawn without interference.");
    }
    return shader;
}

std::unique_ptr<ThinShader> makeThin(const DoubleSidedThinMaterial& material, const ParamReader& params) {
    auto shader = std::make_unique<ThinShader>();
    shader->front = {nullptr, params.number(material.front_roughness, 0.3f),
                     params.number(material.front_fresnel_scale, 1.0f)};
    shader->back = {nullptr, params.number(material.back_roughness, 0.3f),
                    params.number(material.back_fresnel_scale, 1.0f)};
    shader->r_f = params.number(material.r_f, 0.5f);
    shader->transmittance = params.factor(material.transmittance, 0.5f);
    shader->ior = std::max(1.0f, float(material.ior));
    return shader;
}

template <class T>
const T* as(const Material& material) {
    return dynamic_cast<const T*>(&material);
}

} // namespace

MaterialCompiler::MaterialCompiler(ImageCache& images, Notices& notices)
    : images_(images), notices_(notices) {
    auto grey = std::make_unique<DiffuseShader>();
    grey->albedo = {RGB{GREY}, nullptr};
    grey_ = &keep(std::move(grey));
}

MaterialCompiler::~MaterialCompiler() = default;

template <class Shader>
Shader& MaterialCompiler::keep(std::unique_ptr<Shader> shader) {
    Shader& kept = *shader;
    shaders_.push_back(std::move(shader));
    return kept;
}

const SurfaceShader* MaterialCompiler::compile(const SceneNodeMaterial* node) {
    return node && node->material ? compile(*node->material) : grey_;
}

const SurfaceShader* MaterialCompiler::reference(const Ref<SceneNodeMaterial>& node) {
    return compile(node.getPointer());
}

const SurfaceShader* MaterialCompiler::compile(const Material& material) {
    const auto known = known_.find(&material);
    if (known != known_.end() && known->second) {
        return known->second;
    }
    if (known != known_.end() || depth_ >= MAX_DEPTH) {
        notices_.tell("Materials that refer to themselves, or in a chain of more than " +
                      std::to_string(MAX_DEPTH) + ", are drawn in grey.");
        return grey_;
    }
    known_[&material] = nullptr;
    ++depth_;
    const SurfaceShader* const made = make(material);
    --depth_;
    known_[&material] = made;
    return made;
}

const SurfaceShader* MaterialCompiler::make(const Material& material) {
    const ParamReader params(material, images_, notices_);
    const auto surface = [&](auto made) -> auto& {
        const auto& described = static_cast<const SurfaceMaterial&>(material);
        readSurface(described, params, *made);
        has_emitters_ = has_emitters_ || described.base_emission || described.emission;
        return keep(std::move(made));
    };
    if (const auto* diffuse = as<DiffuseMaterial>(material)) {
        return &surface(makeDiffuse(*diffuse, params));
    }
    if (const auto* oren_nayar = as<OrenNayarMaterial>(material)) {
        return &surface(makeOrenNayar(*oren_nayar, params));
    }
    if (const auto* phong = as<PhongMaterial>(material)) {
        return &surface(makePhong(*phong, params));
    }
    if (const auto* transmitter = as<DiffuseTransmitter>(material)) {
        auto shader = std::make_unique<DiffuseShader>();
        shader->kind = Lobe::Kind::DIFFUSE_TRANSMIT;
        shader->albedo = params.factor(transmitter->albedo, 0.0f);
        shader->inside = compileMedium(transmitter->internal_medium.getPointer());
        return &surface(std::move(shader));
    }
    if (const auto* specular = as<SpecularMaterial>(material)) {
        GlassShader& shader = surface(makeSpecular(*specular, params));
        shader.inside = compileMedium(specular->internal_medium.getPointer());
        return &shader;
    }
    if (const auto* glossy = as<GlossyTransparent>(material)) {
        GlassShader& shader = surface(makeGlossyTransparent(*glossy, params));
        shader.inside = compileMedium(glossy->internal_medium.getPointer());
        return &shader;
    }
    if (const auto* coating = as<CoatingMaterial>(material)) {
        CoatingShader& shader = surface(makeCoating(*coating, params));
        shader.substrate = reference(coating->substrate_material);
        return &shader;
    }
    if (const auto* thin = as<DoubleSidedThinMaterial>(material)) {
        ThinShader& shader = surface(makeThin(*thin, params));
        shader.front.shader = reference(thin->front_material);
        shader.back.shader = reference(thin->back_material);
        return &shader;
    }
    if (const auto* blend = as<BlendMaterial>(material)) {
        MixShader& shader = keep(std::make_unique<MixShader>());
        shader.blends = true;
        shader.steps = blend->step_blend;
        const SurfaceShader* const a = reference(blend->a_mat);
        const SurfaceShader* const b = reference(blend->b_mat);
        shader.parts = {{a, params.number(blend->blend, GREY)}, {b, {}}};
        return &shader;
    }
    if (const auto* sum = as<SumMaterial>(material)) {
        MixShader& shader = keep(std::make_unique<MixShader>());
        for (u64 i = 0; i < sum->materials.size() && i < sum->weights.size(); ++i) {
            shader.parts.push_back({reference(sum->materials[i]), params.number(sum->weights[i], 0.0f)});
        }
        return &shader;
    }
    if (as<NullMaterial>(material) || as<ExitPortalMaterial>(material)) {
        return &keep(std::make_unique<PassShader>());
    }
    notices_.tell("Materials of the kind '" + material.getTypeName().toStdString() + "' are drawn in grey.");
    return grey_;
}

const InternalMedium* MaterialCompiler::compileMedium(const SceneNodeMedium* node) {
    if (!node || !node->medium) {
        return nullptr;
    }
    const auto known = media_.find(node);
    if (known != media_.end()) {
        return known->second.get();
    }
    auto medium = std::make_unique<InternalMedium>();
    medium->precedence = node->medium->precedence;
    const auto* const basic = dynamic_cast<const BasicMedium*>(node->medium.getPointer());
    if (!basic) {
        notices_.tell("Media other than 'basic' are drawn as clear water.");
        medium->ior = 1.33f;
    } else {
        medium->ior = std::clamp(float(basic->ior), 1.0f, 10.0f);
        const auto* const constant =
            dynamic_cast<const ConstantVolumeParam*>(basic->absorption_coefficient.getPointer());
        if (constant && constant->spectrum) {
            medium->absorption = absorptionOf(*constant->spectrum);
        } else if (basic->absorption_coefficient && !constant) {
            notices_.tell("Absorption that varies within a medium is not drawn.");
        }
        if (basic->subsurface_scattering) {
            notices_.tell("Scattering inside media is not drawn.");
        }
        if (basic->cauchy_b_coeff != 0) {
            notices_.tell("Glass is drawn without dispersion.");
        }
    }
    return (media_[node] = std::move(medium)).get();
}

} // namespace engine
