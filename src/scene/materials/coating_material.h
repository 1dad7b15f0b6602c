// SPDX-License-Identifier: MIT
#pragma once

#include "scene/materials/surface_material.h"
#include "scene/scene_node_material.h"

namespace Quenza {

/// A thin layer over another material.
class CoatingMaterial : public SurfaceMaterial {
public:
    static constexpr u32 TYPE = 12;

    CoatingMaterial() : SurfaceMaterial(KIND) {}

    Ref<WavelengthDependentParam> absorption;  ///< Inside the layer, per metre.
    Ref<WavelengthIndependentParam> thickness; ///< Micrometres.
    Ref<WavelengthIndependentParam> roughness;
    Ref<WavelengthIndependentParam> fresnel_scale;
    double ior = 1.5;
    bool interference = false;
    Ref<SceneNodeMaterial> substrate_material;
    SceneNodeUID substrate_material_uid;

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "coating", "CoatingMaterial"};
};

} // namespace Quenza
