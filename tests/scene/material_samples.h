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

inline Ref<SceneNodeMaterial> makeNode(const Ref<Material>& material, u32 uid, const char* name) {
    Ref<SceneNodeMaterial> node = new SceneNodeMaterial(material);
    node->setUID(SceneNodeUID(uid));
    node->setName(name);
    return node;
}

} // namespace Quenza
