// SPDX-License-Identifier: MIT
#pragma once

#include "scene/materials/surface_material.h"
#include "scene/scene_node_material.h"

namespace Quenza {

/// A sheet with a material on each side that lets light through, such as a leaf.
class DoubleSidedThinMaterial : public SurfaceMaterial {
public:
    static constexpr u32 TYPE = 13;

    DoubleSidedThinMaterial() : SurfaceMaterial(KIND) {}

    Ref<SceneNodeMaterial> front_material;
    SceneNodeUID front_material_uid;
    Ref<SceneNodeMaterial> back_material;
    SceneNodeUID back_material_uid;
    double ior = 1.5;                    ///< Not part of the file.
    Ref<WavelengthIndependentParam> r_f; ///< Share of the light that the inside sends back.
    Ref<WavelengthDependentParam> transmittance;
    Ref<WavelengthIndependentParam> front_roughness;
    Ref<WavelengthIndependentParam> back_roughness;
    Ref<WavelengthIndependentParam> front_fresnel_scale;
    Ref<WavelengthIndependentParam> back_fresnel_scale;

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "double_sided_thin", "DoubleSidedThinMaterial"};
};

} // namespace Quenza
