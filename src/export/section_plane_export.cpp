// SPDX-License-Identifier: MIT
#include "export/section_plane_export.h"

#include "export/scene_exporter.h"
#include "host/inexclude.h"
#include "shared/parameter_ids.h"
#include "shared/scene_space.h"

void exportSectionPlane(SceneExporter& exporter, const BaseObject* object, const Matrix& matrix) {
    const BaseContainer* const data = object->GetDataInstance();
    const Quenza::Ref<Quenza::SceneNodeSectionPlane> plane = new Quenza::SceneNodeSectionPlane;
    plane->enabled = true;
    plane->point = toSceneSpaceDouble(matrix.off * exporter.context->sceneScale);
    plane->normal = toSceneSpaceDouble(matrix.axisZ);
    plane->cull_geometry = data->GetBool(SECTION_CULL_GEOMETRY, true);
    plane->object_list_type = data->GetLong(SECTION_LIST_KIND, SECTION_LIST_INCLUDE) == SECTION_LIST_INCLUDE
                                  ? Quenza::SceneNodeSectionPlane::INCLUDE
                                  : Quenza::SceneNodeSectionPlane::EXCLUDE;
    exporter.root->addChild(plane);
    const auto* const list = static_cast<const InExcludeData*>(
        data->GetCustomDataType(SECTION_OBJECTS, CUSTOMDATATYPE_INEXCLUDE_LIST));
    if (!plane->cull_geometry || !list || list->GetObjectCount() == 0) {
        return;
    }
    auto& planes =
        data->GetBool(SECTION_WITH_CHILDREN, true) ? exporter.excludingPlanes : exporter.includingPlanes;
    planes.push_back({plane, std::unique_ptr<AtomArray>(list->GetObjectsIn(exporter.context->document))});
}
