// SPDX-License-Identifier: MIT
#include "materials/bake_command.h"

#include "host/dialog.h"
#include "host/document.h"
#include "host/general.h"
#include "materials/bake_dialog.h"
#include "materials/bake_target.h"

bool BakeCommand::Execute(BaseDocument* document) {
    TextureTag* const tag = findBakeTag(document);
    if (!tag) {
        return false;
    }
    BakeDialog dialog(document, tag);
    return dialog.OpenModal(400, 300);
}

int32_t BakeCommand::GetState(BaseDocument* document) {
    return findBakeTag(document) ? CMD_ENABLED : 0;
}

bool BakeUVWCommand::Execute(BaseDocument* document) {
    TextureTag* const tag = findBakeTag(document);
    if (!tag) {
        return false;
    }
    document->StartUndo();
    const bool isDone = prepareBakeUVW(document, tag) != nullptr;
    document->EndUndo();
    if (!isDone) {
        MessageDialog(NO_BAKE_UVW);
        return false;
    }
    document->SetChanged();
    EventAdd();
    return true;
}

int32_t BakeUVWCommand::GetState(BaseDocument* document) {
    return findBakeTag(document) ? CMD_ENABLED : 0;
}
