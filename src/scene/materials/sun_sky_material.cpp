// SPDX-License-Identifier: MIT
#include "scene/materials/sun_sky_material.h"

namespace Quenza {

void SunSkyMaterial::describe(MaterialFields& fields) {
    fields.vector("sundir", sundir);
    fields.number("turbidity", turbidity);
    fields.boolean("extra_atmospheric", extra_atmospheric);
    fields.boolean("enable_sky", enable_sky);
    fields.layer("sun_layer", sun_layer);
    fields.layer("sky_layer", sky_layer);
    fields.text("model", model);
}

} // namespace Quenza
