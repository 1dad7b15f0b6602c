// SPDX-License-Identifier: MIT
#include "scene/materials/double_sided_thin_material.h"

namespace Quenza {

void DoubleSidedThinMaterial::describe(MaterialFields& fields) {
    describeSurface(fields);
    fields.layer("layer", layer);
    fields.material({"front_material_uid", "front_material_name"}, front_material, front_material_uid);
    fields.material({"back_material_uid", "back_material_name"}, back_material, back_material_uid);
    fields.parameter("r_f", r_f);
    fields.parameter("transmittance", transmittance);
    fields.parameter("front_roughness", front_roughness);
    fields.parameter("back_roughness", back_roughness);
    fields.parameter("front_fresnel_scale", front_fresnel_scale);
    fields.parameter("back_fresnel_scale", back_fresnel_scale);
}

} // namespace Quenza
