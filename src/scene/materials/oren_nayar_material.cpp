// SPDX-License-Identifier: MIT
#include "scene/materials/oren_nayar_material.h"

namespace Quenza {

void OrenNayarMaterial::describe(MaterialFields& fields) {
    fields.parameter("albedo", albedo);
    fields.parameter("sigma", sigma);
    describeSurface(fields);
    fields.layer("layer", layer);
}

} // namespace Quenza
