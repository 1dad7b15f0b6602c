// SPDX-License-Identifier: MIT
#include "export/exit_portal_export.h"

#include "export/model_export.h"
#include "export/model_transform.h"
#include "export/scene_exporter.h"
#include "scene/materials/exit_portal_material.h"
#include "shared/add_material.h"

#include <vector>

void exportExitPortal(SceneExporter& exporter, BaseObject* object, Quenza::SceneNodeUID meshUID,
                      const Matrix& matrix, size_t slotCount) {
    ExportContext& context = *exporter.context;
    if (!context.exitPortalMaterialUID.isValid()) {
        context.exitPortalMaterialUID =
            addMaterial(*exporter.root, new Quenza::ExitPortalMaterial, "Exit Portal");
    }
    const std::vector<Quenza::SceneNodeUID> materials(slotCount, context.exitPortalMaterialUID);
    const Quenza::Ref<Quenza::SceneNodeModel> model = makeModel(exporter, object, meshUID, materials);
    setModelStaticTransform(*model, matrix, context.sceneScale);
    addModel(exporter, object, model);
}
