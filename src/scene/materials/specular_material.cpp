// SPDX-License-Identifier: MIT
#include "scene/materials/specular_material.h"

namespace Quenza {

void SpecularMaterial::describe(MaterialFields& fields) {
    fields.medium(internal_medium, internal_medium_uid);
    fields.boolean("transparent", transparent);
    fields.parameter("absorption_layer_transmittance", absorption_layer_transmittance);
    describeSurface(fields);
    fields.layer("layer", layer);
    fields.table("tabulated_external_reflection_coefficient", tabulated_external_reflection_coefficient);
    fields.table("tabulated_internal_reflection_coefficient", tabulated_internal_reflection_coefficient);
    fields.table("tabulated_transmission_coefficient", tabulated_transmission_coefficient);
    fields.optionalText("private_data", private_data);
}

} // namespace Quenza
