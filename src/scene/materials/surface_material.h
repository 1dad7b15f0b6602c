// SPDX-License-Identifier: MIT
#pragma once

#include "scene/material.h"

namespace Quenza {

/// What all materials with a surface of their own have in common.
class SurfaceMaterial : public Material {
public:
    Ref<DisplacementParam> bump;
    Ref<DisplacementParam> displacement;
    Ref<WavelengthDependentParam> base_emission;
    Ref<WavelengthDependentParam> emission; ///< Multiplies `base_emission`.
    Ref<Vec3Param> normal_map;
    i32 layer = 0; ///< Light layer of the emission.

protected:
    using Material::Material;

    /// Presents all of the above but the layer.
    void describeSurface(MaterialFields& fields) {
        fields.parameter("bump", bump);
        fields.displacement(displacement);
        fields.parameter("base_emission", base_emission);
        fields.parameter("emission", emission);
        fields.parameter("normal_map", normal_map);
    }
};

} // namespace Quenza
