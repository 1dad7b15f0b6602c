// SPDX-License-Identifier: MIT
#include "scene/materials/plugin_material.h"

namespace Quenza {

void PluginMaterial::describe(MaterialFields& fields) {
    fields.layer("layer", layer);
    fields.text("plugin_name", plugin_name);
    fields.text("material_name", material_name);
}

} // namespace Quenza
