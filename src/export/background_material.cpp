// SPDX-License-Identifier: MIT
#include "export/background_material.h"

#include "export/base_emission.h"
#include "export/export_context.h"
#include "export/light_layers.h"
#include "export/material_ids.h"
#include "export/plugin_ids.h"
#include "host/material.h"
#include "scene/materials/diffuse_material.h"

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
