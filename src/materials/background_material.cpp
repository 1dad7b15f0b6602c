// SPDX-License-Identifier: MIT
#include "materials/background_material.h"

#include "host/material.h"
#include "materials/base_emission.h"
#include "materials/material_ids.h"
#include "scene/materials/diffuse_material.h"
#include "shared/export_context.h"
#include "shared/light_layers.h"
#include "shared/plugin_ids.h"

Quenza::Ref<Quenza::Material> exportBackgroundMaterial(ExportContext& context, const BaseMaterial* material) {
    if (material->GetType() != PLUGINID_MATERIAL) {
        return nullptr;
    }
    const BaseContainer& data = *material->GetDataInstance();
    const Quenza::Ref<Quenza::DiffuseMaterial> background = new Quenza::DiffuseMaterial;
    background->name = "background_material";
    background->base_emission = exportBaseEmission(data);
    if (data.GetBool(MAT_EMISSION_ENABLED)) {
        background->layer = layerIndex(context, data.GetLong(MAT_EMISSION_LAYER));
    }
    return background;
}
