// SPDX-License-Identifier: MIT
#include "scene/materials/diffuse_material.h"

namespace Quenza {

void DiffuseMaterial::describe(MaterialFields& fields) {
    fields.parameter("albedo", albedo);
    describeSurface(fields);
    fields.boolean("random_triangle_colours", random_triangle_colours);
    fields.layer("layer", layer);
}

} // namespace Quenza
