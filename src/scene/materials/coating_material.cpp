// SPDX-License-Identifier: MIT
#include "scene/materials/coating_material.h"

namespace Quenza {

void CoatingMaterial::describe(MaterialFields& fields) {
    fields.parameter("absorption", absorption);
    fields.parameter("thickness", thickness);
    fields.parameter("roughness", roughness);
    describeSurface(fields);
    fields.layer("layer", layer);
    fields.parameter("fresnel_scale", fresnel_scale);
    fields.number("ior", ior);
    fields.boolean("interference", interference);
    fields.material({"substrate_material_uid", "substrate_material_name"}, substrate_material,
                    substrate_material_uid);
}

} // namespace Quenza
