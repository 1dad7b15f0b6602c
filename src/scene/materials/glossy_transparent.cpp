// SPDX-License-Identifier: MIT
#include "scene/materials/glossy_transparent.h"

namespace Quenza {

void GlossyTransparent::describe(MaterialFields& fields) {
    fields.medium(internal_medium, internal_medium_uid);
    fields.parameter("exponent", exponent);
    fields.parameter("absorption_layer_transmittance", absorption_layer_transmittance);
    describeSurface(fields);
    fields.layer("layer", layer);
}

} // namespace Quenza
