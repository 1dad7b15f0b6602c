// SPDX-License-Identifier: MIT
#include "scene/materials/phong_material.h"

namespace Quenza {

void PhongMaterial::describe(MaterialFields& fields) {
    fields.parameter("diffuse_albedo", diffuse_albedo);
    fields.parameter("specular_reflectivity", specular_reflectivity);
    fields.parameter("exponent", exponent);
    describeSurface(fields);
    fields.parameter("fresnel_scale", fresnel_scale);
    fields.layer("layer", layer);
    fields.number("ior", ior);
    fields.optionalText("nk_data", nk_data);
}

} // namespace Quenza
