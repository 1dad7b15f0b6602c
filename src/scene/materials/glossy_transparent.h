// SPDX-License-Identifier: MIT
#pragma once

#include "scene/materials/surface_material.h"
#include "scene/scene_node_medium.h"

namespace Quenza {

/// A dielectric with a rough surface, such as frosted glass.
class GlossyTransparent : public SurfaceMaterial {
public:
    static constexpr u32 TYPE = 7;

    GlossyTransparent() : SurfaceMaterial(KIND) {}

    Ref<SceneNodeMedium> internal_medium;
    SceneNodeUID internal_medium_uid;
    Ref<WavelengthIndependentParam> exponent;
    Ref<WavelengthDependentParam> absorption_layer_transmittance;

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "glossy_transparent", "GlossyTransparent"};
};

} // namespace Quenza
