// SPDX-License-Identifier: MIT
#include "engine/material_compiler.h"

#include "engine/diffuse_shader.h"
#include "engine/fresnel.h"
#include "engine/glass_shader.h"
#include "engine/layered_shaders.h"
#include "engine/mix_shader.h"
#include "engine/nk_table.h"
#include "foundation/file_utils.h"
#include "scene/materials/coating_material.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/diffuse_transmitter.h"
#include "scene/materials/double_sided_thin_material.h"
#include "scene/materials/exit_portal_material.h"
#include "scene/materials/glossy_transparent.h"
#include "scene/materials/null_material.h"
#include "scene/materials/oren_nayar_material.h"
#include "scene/materials/specular_material.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace engine {

namespace {

using namespace Quenza;

/// A chain of materials that is longer is taken for one without an end.
constexpr int MAX_DEPTH = 100;
/// Reflectance of what the engine doesn't know.
constexpr float GREY = 0.5f;
/// A Phong exponent without a value: a soft highlight.
constexpr float DEFAULT_EXPONENT = 1000.0f;

template <class T>
const T* as(const Material& material) {
    return dynamic_cast<const T*>(&material);
}

float indexOf(double ior) {
    return std::isfinite(ior) ? std::clamp(float(ior), 1.0f, 10.0f) : 1.5f;
}

void readSurface(const SurfaceMaterial& material, const InputBuilder& inputs, PlainShader& shader) {
    if (material.base_emission) {
        shader.emission = inputs.radiance(material.base_emission, "base_emission");
        shader.emission_factor = inputs.colour(material.emission, "emission", 1.0f);
    } else if (material.emission) {
        shader.emission = inputs.radiance(material.emission, "emission");
    }
    shader.layer = u32(std::max(0, material.layer));
    shader.emits_back = material.backface_emit;
    shader.bump_height = inputs.displacement(material.bump, "bump", 0.0f);
    shader.normal_map = inputs.vector(material.normal_map, "normal_map");
    shader.height = inputs.displacement(material.displacement, "displacement", 0.0f);
}

std::unique_ptr<DiffuseShader> makeDiffuse(const DiffuseMaterial& material, const InputBuilder& inputs) {
    auto shader = std::make_unique<DiffuseShader>();
    shader->albedo = inputs.colour(material.albedo, "albedo", 0.0f);
    shader->random_colours = material.random_triangle_colours;
    return shader;
}

std::unique_ptr<DiffuseShader> makeOrenNayar(const OrenNayarMaterial& material, const InputBuilder& inputs) {
    auto shader = std::make_unique<DiffuseShader>();
    shader->kind = Lobe::Kind::OREN_NAYAR;
    shader->albedo = inputs.colour(material.albedo, "albedo", 0.0f);
    shader->sigma = inputs.scalar(material.sigma, "sigma", 0.3f);
    return shader;
}

std::unique_ptr<DiffuseShader> makeTransmitter(const DiffuseTransmitter& material,
                                               const InputBuilder& inputs) {
    auto shader = std::make_unique<DiffuseShader>();
    shader->kind = Lobe::Kind::DIFFUSE_TRANSMIT;
    shader->albedo = inputs.colour(material.albedo, "albedo", 0.0f);
    return shader;
}

std::unique_ptr<GlassShader> makeSpecular(const SpecularMaterial& material, const InputBuilder& inputs) {
    auto shader = std::make_unique<GlassShader>();
    shader->transparent = material.transparent;
    shader->layer_transmittance =
        inputs.colour(material.absorption_layer_transmittance, "absorption_layer_transmittance", 1.0f);
    if (material.tabulated_external_reflection_coefficient ||
        material.tabulated_internal_reflection_coefficient || material.tabulated_transmission_coefficient) {
        inputs.notices().tell("Tabulated coefficients of specular materials are not looked at.");
    }
    return shader;
}

std::unique_ptr<GlassShader> makeGlossyTransparent(const GlossyTransparent& material,
                                                   const InputBuilder& inputs) {
    auto shader = std::make_unique<GlassShader>();
    shader->rough = true;
    shader->exponent = inputs.scalar(material.exponent, "exponent", DEFAULT_EXPONENT);
    shader->layer_transmittance =
        inputs.colour(material.absorption_layer_transmittance, "absorption_layer_transmittance", 1.0f);
    return shader;
}

std::unique_ptr<CoatingShader> makeCoating(const CoatingMaterial& material, const InputBuilder& inputs) {
    auto shader = std::make_unique<CoatingShader>();
    shader->absorption = inputs.colour(material.absorption, "absorption", 0.0f);
    shader->thickness = inputs.scalar(material.thickness, "thickness", 0.0f);
    shader->roughness = inputs.scalar(material.roughness, "roughness", 0.3f);
    shader->fresnel_scale = inputs.scalar(material.fresnel_scale, "fresnel_scale", 1.0f);
    shader->ior = indexOf(material.ior);
    shader->average = fresnelAverage(shader->ior);
    shader->interferes = material.interference;
    return shader;
}

std::unique_ptr<ThinShader> makeThin(const DoubleSidedThinMaterial& material, const InputBuilder& inputs) {
    auto shader = std::make_unique<ThinShader>();
    shader->front = {nullptr, inputs.scalar(material.front_roughness, "front_roughness", 0.3f),
                     inputs.scalar(material.front_fresnel_scale, "front_fresnel_scale", 1.0f)};
    shader->back = {nullptr, inputs.scalar(material.back_roughness, "back_roughness", 0.3f),
                    inputs.scalar(material.back_fresnel_scale, "back_fresnel_scale", 1.0f)};
    shader->r_f = inputs.scalar(material.r_f, "r_f", 0.5f);
    shader->transmittance = inputs.colour(material.transmittance, "transmittance", 0.5f);
    shader->ior = indexOf(material.ior);
    shader->average = fresnelAverage(shader->ior);
    return shader;
}

/// Null, of which the user is told, when there is no such file. The name comes from a scene and must not lead
/// out of the folder.
std::optional<ReflectanceCurve> measuredMetal(const String& name, const std::string& data_folder,
                                              Notices& notices) {
    const std::string text = name.toStdString();
    const std::string path = FileUtils::join(data_folder, name).toStdString();
    std::string fault = "it is not in the folder nkdata";
    const bool inside = text.rfind("nkdata/", 0) == 0 && text.find("..") == std::string::npos &&
                        text.find_first_of("\\:") == std::string::npos;
    const auto table = inside ? NKTable::load(path, fault) : nullptr;
    if (!table) {
        notices.tell("The optical constants '" + text + "' can't be used (" + fault +
                     "); the index of refraction takes their place.");
        return std::nullopt;
    }
    return ReflectanceCurve([&](double nanometres, double cosine) {
        const NKTable::Index index = table->at(nanometres);
        return fresnelConductor(cosine, index.n, index.k);
    });
}

/// What a material is drawn as whose shader doesn't compile.
std::unique_ptr<DiffuseShader> makeWarning() {
    auto shader = std::make_unique<DiffuseShader>();
    shader->albedo = ColourInput(WARNING_COLOUR);
    return shader;
}

} // namespace

MaterialCompiler::MaterialCompiler(ImageCache& images, const std::string& data_folder, Notices& notices)
    : images_(images), data_folder_(data_folder), notices_(notices), media_(notices) {
    auto grey = std::make_unique<DiffuseShader>();
    grey->albedo = ColourInput(RGB{GREY});
    grey_ = keep(std::move(grey));
}

MaterialCompiler::~MaterialCompiler() = default;

template <class Shader>
Shader* MaterialCompiler::keep(std::unique_ptr<Shader> shader) {
    Shader* const kept = shader.get();
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
    SurfaceShader* const made = make(material);
    --depth_;
    const SurfaceShader* result = made;
    if (!made) {
        notices_.tell("Materials of the kind '" + material.getTypeName().toStdString() +
                      "' are drawn in grey.");
        result = grey_;
    } else if (made->countLobes() > BSDF::MAX_LOBES) {
        notices_.tell("Materials made of more than " + std::to_string(BSDF::MAX_LOBES) +
                      " lobes are drawn in grey.");
        result = grey_;
    } else {
        made->catches_shadows = material.shadow_catcher;
    }
    return known_[&material] = result;
}

SurfaceShader* MaterialCompiler::make(const Material& material) {
    if (const auto* surface = as<SurfaceMaterial>(material)) {
        return makeSurface(*surface);
    }
    if (const auto* blend = as<BlendMaterial>(material)) {
        return makeBlend(*blend);
    }
    if (const auto* sum = as<SumMaterial>(material)) {
        return makeSum(*sum);
    }
    if (as<NullMaterial>(material) || as<ExitPortalMaterial>(material)) {
        return keep(std::make_unique<PassShader>());
    }
    return nullptr;
}

SurfaceShader* MaterialCompiler::makeSurface(const SurfaceMaterial& material) {
    const InputBuilder inputs(material, images_, notices_);
    std::unique_ptr<PlainShader> shader = makePlain(material, inputs);
    if (!shader) {
        return nullptr;
    }
    readSurface(material, inputs, *shader);
    has_emitters_ = has_emitters_ || material.base_emission || material.emission;
    if (inputs.failed()) {
        shader = makeWarning();
    }
    return keep(std::move(shader));
}

std::unique_ptr<PlainShader> MaterialCompiler::makePlain(const SurfaceMaterial& material,
                                                         const InputBuilder& inputs) {
    if (const auto* diffuse = as<DiffuseMaterial>(material)) {
        return makeDiffuse(*diffuse, inputs);
    }
    if (const auto* oren_nayar = as<OrenNayarMaterial>(material)) {
        return makeOrenNayar(*oren_nayar, inputs);
    }
    if (const auto* phong = as<PhongMaterial>(material)) {
        return makePhong(*phong, inputs);
    }
    if (const auto* transmitter = as<DiffuseTransmitter>(material)) {
        auto shader = makeTransmitter(*transmitter, inputs);
        shader->inside = media_.compile(transmitter->internal_medium.getPointer());
        return shader;
    }
    if (const auto* specular = as<SpecularMaterial>(material)) {
        auto shader = makeSpecular(*specular, inputs);
        shader->inside = media_.compile(specular->internal_medium.getPointer());
        return shader;
    }
    if (const auto* glossy = as<GlossyTransparent>(material)) {
        auto shader = makeGlossyTransparent(*glossy, inputs);
        shader->inside = media_.compile(glossy->internal_medium.getPointer());
        return shader;
    }
    if (const auto* coating = as<CoatingMaterial>(material)) {
        auto shader = makeCoating(*coating, inputs);
        shader->substrate = reference(coating->substrate_material);
        return shader;
    }
    if (const auto* thin = as<DoubleSidedThinMaterial>(material)) {
        auto shader = makeThin(*thin, inputs);
        shader->front.shader = reference(thin->front_material);
        shader->back.shader = reference(thin->back_material);
        return shader;
    }
    return nullptr;
}

std::unique_ptr<PhongShader> MaterialCompiler::makePhong(const PhongMaterial& material,
                                                         const InputBuilder& inputs) {
    auto shader = std::make_unique<PhongShader>();
    shader->exponent = inputs.scalar(material.exponent, "exponent", DEFAULT_EXPONENT);
    shader->fresnel_scale = inputs.scalar(material.fresnel_scale, "fresnel_scale", 1.0f);
    shader->ior = indexOf(material.ior);
    shader->average = fresnelAverage(shader->ior);
    if (!material.nk_data.empty()) {
        shader->measured = measuredMetal(material.nk_data, data_folder_, notices_);
    }
    shader->metal = shader->measured || material.specular_reflectivity;
    shader->colour = material.specular_reflectivity
                         ? inputs.colour(material.specular_reflectivity, "specular_reflectivity", 0.0f)
                         : inputs.colour(material.diffuse_albedo, "diffuse_albedo", 0.0f);
    return shader;
}

SurfaceShader* MaterialCompiler::makeBlend(const BlendMaterial& material) {
    const InputBuilder inputs(material, images_, notices_);
    auto shader = std::make_unique<MixShader>();
    shader->blends = true;
    shader->steps = material.step_blend;
    const SurfaceShader* const a = reference(material.a_mat);
    const SurfaceShader* const b = reference(material.b_mat);
    shader->parts = {{a, inputs.displacement(material.blend, "blend", GREY)}, {b, ScalarInput()}};
    if (inputs.failed()) {
        return keep(makeWarning());
    }
    return keep(std::move(shader));
}

SurfaceShader* MaterialCompiler::makeSum(const SumMaterial& material) {
    const InputBuilder inputs(material, images_, notices_);
    auto shader = std::make_unique<MixShader>();
    for (u64 i = 0; i < material.materials.size() && i < material.weights.size(); ++i) {
        shader->parts.push_back(
            {reference(material.materials[i]), inputs.scalar(material.weights[i], "weight", 0.0f)});
    }
    if (inputs.failed()) {
        return keep(makeWarning());
    }
    return keep(std::move(shader));
}

} // namespace engine
