// SPDX-License-Identifier: MIT
#pragma once

#include "scene/displacement_param.h"
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
#include "scene/materials/plugin_material.h"
#include "scene/materials/specular_material.h"
#include "scene/materials/sum_material.h"
#include "scene/materials/sun_sky_material.h"
#include "scene/vec3_param.h"
#include "scene/wavelength_dependent_param.h"
#include "scene/wavelength_independent_param.h"

namespace Quenza {

/// Texture parameters, which are short and say by their index where they came from.
inline Ref<WavelengthDependentParam> spectral(i32 index) {
    return new TextureWavelengthDependentParam(index);
}
inline Ref<WavelengthIndependentParam> scalar(i32 index) {
    return new TextureWavelengthIndependentParam(index);
}
inline Ref<DisplacementParam> height(i32 index) {
    return new TextureDisplacementParam(index);
}

/// Sets the fields that all surface materials have.
template <class M>
Ref<M> makeSurface() {
    Ref<M> material = new M;
    material->bump = height(90);
    material->displacement = height(91);
    material->base_emission = spectral(92);
    material->emission = spectral(93);
    material->normal_map = new TextureVec3Param(94);
    material->layer = 7;
    return material;
}

/// A material of each class with fields of its own, all set but what excludes another.
inline Ref<Material> makeDiffuse() {
    auto m = makeSurface<DiffuseMaterial>();
    m->albedo = spectral(1);
    m->random_triangle_colours = true;
    return m;
}

inline Ref<Material> makeTransmitter() {
    auto m = makeSurface<DiffuseTransmitter>();
    m->albedo = spectral(1);
    m->internal_medium_uid = SceneNodeUID(55);
    return m;
}

inline Ref<Material> makeOrenNayar() {
    auto m = makeSurface<OrenNayarMaterial>();
    m->albedo = spectral(1);
    m->sigma = scalar(2);
    return m;
}

inline Ref<Material> makePhong() {
    auto m = makeSurface<PhongMaterial>();
    m->diffuse_albedo = spectral(1);
    m->specular_reflectivity = spectral(2);
    m->exponent = scalar(3);
    m->fresnel_scale = scalar(4);
    m->ior = 1.6;
    m->nk_data = "nkdata/Au.nk";
    return m;
}

inline Ref<Material> makeSpecular() {
    auto m = makeSurface<SpecularMaterial>();
    m->internal_medium_uid = SceneNodeUID(55);
    m->transparent = false;
    m->absorption_layer_transmittance = spectral(1);
    m->tabulated_internal_reflection_coefficient = new TabulatedSpectralData;
    m->private_data = "x<y";
    return m;
}

inline Ref<Material> makeGlossy() {
    auto m = makeSurface<GlossyTransparent>();
    m->internal_medium_uid = SceneNodeUID(55);
    m->exponent = scalar(1);
    m->absorption_layer_transmittance = spectral(2);
    return m;
}

inline Ref<Material> makeCoating() {
    auto m = makeSurface<CoatingMaterial>();
    m->absorption = spectral(1);
    m->thickness = scalar(2);
    m->roughness = scalar(3);
    m->fresnel_scale = scalar(4);
    m->interference = true;
    m->substrate_material_uid = SceneNodeUID(66);
    return m;
}

inline Ref<Material> makeThin() {
    auto m = makeSurface<DoubleSidedThinMaterial>();
    m->front_material_uid = SceneNodeUID(66);
    m->back_material_uid = SceneNodeUID(67);
    m->r_f = scalar(1);
    m->transmittance = spectral(2);
    m->front_roughness = scalar(3);
    m->back_roughness = scalar(4);
    m->front_fresnel_scale = scalar(5);
    m->back_fresnel_scale = scalar(6);
    return m;
}

inline Ref<Material> makeBlend() {
    Ref<BlendMaterial> m = new BlendMaterial;
    m->a_mat_uid = SceneNodeUID(66);
    m->b_mat_uid = SceneNodeUID(67);
    m->blend = height(1);
    m->step_blend = true;
    return m;
}

inline Ref<Material> makeSunSky() {
    Ref<SunSkyMaterial> m = new SunSkyMaterial;
    m->sundir = {1, 0.5, 0};
    m->sky_layer = 3;
    m->sun_layer = 2;
    return m;
}

inline Ref<Material> makePlugin() {
    Ref<PluginMaterial> m = new PluginMaterial;
    m->layer = 4;
    m->plugin_name = "p";
    m->material_name = "m";
    return m;
}

inline Ref<SceneNodeMaterial> makeNode(const Ref<Material>& material, u32 uid, const char* name) {
    Ref<SceneNodeMaterial> node = new SceneNodeMaterial(material);
    node->setUID(SceneNodeUID(uid));
    node->setName(name);
    return node;
}

} // namespace Quenza
