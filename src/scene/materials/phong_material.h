// SPDX-License-Identifier: MIT
#pragma once

#include "scene/materials/surface_material.h"

namespace Quenza {

/// Diffuse reflection under a glossy layer, or a glossy metal.
class PhongMaterial : public SurfaceMaterial {
public:
    static constexpr u32 TYPE = 5;

    PhongMaterial() : SurfaceMaterial(KIND) {}

    Ref<WavelengthDependentParam> diffuse_albedo;
    Ref<WavelengthDependentParam> specular_reflectivity; ///< Metal of that colour.
    Ref<WavelengthIndependentParam> exponent;
    Ref<WavelengthIndependentParam> fresnel_scale;
    double ior = 1.5;
    String
        nk_data; ///< Measured metal: a file of the renderer's own data folder, "nkdata/Au.nk". Empty: none.

protected:
    void describe(MaterialFields& fields) override;

private:
    static constexpr Kind KIND{TYPE, "phong", "PhongMaterial"};
};

} // namespace Quenza
