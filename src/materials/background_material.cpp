// SPDX-License-Identifier: MIT
#include "materials/background_material.h"

#include "host/material.h"
#include "materials/material_bodies.h"
#include "shared/plugin_ids.h"

Quenza::Ref<Quenza::Material> exportBackgroundMaterial(ExportContext& context, const BaseMaterial* material) {
    if (!material || material->GetType() != PLUGINID_MATERIAL) {
        return nullptr;
    }
    return makeBackgroundBody(material, "background_material", context);
}
