// SPDX-License-Identifier: MIT
#include "scene/materials/diffuse_transmitter.h"

namespace Quenza {

void DiffuseTransmitter::describe(MaterialFields& fields) {
    fields.parameter("albedo", albedo);
    describeSurface(fields);
    fields.layer("layer", layer);
    fields.medium(internal_medium, internal_medium_uid);
}

} // namespace Quenza
