// SPDX-License-Identifier: MIT
#include "export/light_export.h"

#include "export/emission_export.h"
#include "export/light_material.h"
#include "export/light_shape.h"
#include "export/model_export.h"
#include "export/polygon_export.h"
#include "export/scene_exporter.h"
#include "export/sphere_export.h"
#include "host/ids.h"
#include "host/tag.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

namespace {

/// Without a size in the host, an omni light is a ball of one centimetre, whatever the scene's scale.
bool exportOmni(SceneExporter& exporter, const BaseObject* light, const Matrix& matrix) {
    BaseObject* sphere = BaseObject::Alloc(Osphere);
    if (!sphere) {
        return false;
    }
    sphere->GetDataInstance()->SetReal(PRIM_SPHERE_RAD, 0.01f / exporter.context->sceneScale);
    exportLightMaterial(exporter, light);
    exportSphere(exporter, sphere, matrix, true);
    BaseObject::Free(sphere);
    return true;
}

bool exportShape(SceneExporter& exporter, PolygonObject* geometry, const Matrix& matrix, LightKind kind,
                 BaseObject* light, bool invisibleToCamera) {
    if (!geometry || geometry->GetPolygonCount() < 1) {
        return false;
    }
    exportLightMaterial(exporter, light);
    const ExportedMesh mesh = exportMesh(exporter, geometry, true);
    if (!mesh.uid.isValid()) {
        return false;
    }
    exportLightModel(exporter, geometry, mesh, matrix, kind, light, invisibleToCamera);
    return true;
}

/// The linked object serves as it is, about the light's origin.
PolygonObject* linkedShape(const SceneExporter& exporter, const BaseContainer& light) {
    return static_cast<PolygonObject*>(
        light.GetLink(LIGHT_AREADETAILS_OBJECT, exporter.context->document, Opolygon));
}

void addSpotEmission(const ExportContext& context, Quenza::SceneNodeModel& model, const BaseTag* tag) {
    if (tag) {
        addTagEmission(context, model, tag);
    }
    if (!tag || !tag->GetDataInstance()->GetBool(LIGHT_USE_IES)) {
        addIESProfile(model, context.lightMaterialUID, defaultIESFile());
    }
}

} // namespace

bool exportLight(SceneExporter& exporter, BaseObject* light, const Matrix& matrix, bool invisibleToCamera) {
    const BaseContainer& data = *light->GetDataInstance();
    const int32_t type = data.GetLong(LIGHT_TYPE);
    if (type == LIGHT_TYPE_OMNI) {
        return exportOmni(exporter, light, matrix);
    }
    if (type == LIGHT_TYPE_SPOT) {
        const LightShape shape(makeSpotPrimitive(exporter.context->sceneScale));
        return exportShape(exporter, shape.polygons(), matrix, LightKind::SPOT, light, invisibleToCamera);
    }
    if (type != LIGHT_TYPE_AREA) {
        return false;
    }
    if (data.GetLong(LIGHT_AREADETAILS_SHAPE) == LIGHT_AREADETAILS_SHAPE_OBJECT) {
        return exportShape(exporter, linkedShape(exporter, data), matrix, LightKind::AREA, light,
                           invisibleToCamera);
    }
    const LightShape shape(makeAreaPrimitive(data));
    return exportShape(exporter, shape.polygons(), matrix, LightKind::AREA, light, invisibleToCamera);
}

void exportLightModel(SceneExporter& exporter, PolygonObject* geometry, const ExportedMesh& mesh,
                      const Matrix& matrix, LightKind kind, BaseObject* light, bool invisibleToCamera) {
    if (!light) {
        return;
    }
    const Quenza::Ref<Quenza::SceneNodeModel> model = makeModel(exporter, geometry, mesh.uid, mesh.materials);
    model->invisible_to_camera = invisibleToCamera;
    placeModel(exporter, geometry, matrix, *model);
    const BaseTag* const tag = light->GetTag(PLUGINID_LIGHT_TAG);
    if (kind == LightKind::SPOT) {
        addSpotEmission(*exporter.context, *model, tag);
    } else if (tag) {
        addTagEmission(*exporter.context, *model, tag);
    }
    // Polygons made of a primitive go as soon as they are exported; the artist knows the light alone.
    addModel(exporter, light, model);
}
