// SPDX-License-Identifier: MIT
#include "materials/new_material_command.h"

#include "host/document.h"
#include "host/general.h"
#include "host/material.h"
#include "shared/plugin_ids.h"

bool NewMaterialCommand::Execute(BaseDocument* document) {
    BaseMaterial* const material = document ? BaseMaterial::Alloc(PLUGINID_MATERIAL) : nullptr;
    if (!material) {
        return false;
    }
    document->StartUndo();
    document->InsertMaterial(material);
    document->AddUndo(UNDOTYPE_NEW, material);
    document->EndUndo();
    material->Message(MSG_UPDATE);
    EventAdd();
    return true;
}
