// SPDX-License-Identifier: MIT
#include "export/model_export.h"

#include "export/model_transform.h"
#include "export/motion_blur.h"
#include "export/scene_exporter.h"
#include "shared/text.h"

using Quenza::Ref;
using Quenza::SceneNodeModel;
using Quenza::SceneNodeUID;

Ref<SceneNodeModel> makeModel(SceneExporter& exporter, const BaseObject* object, SceneNodeUID meshUID,
                              const std::vector<SceneNodeUID>& materials) {
    const Ref<SceneNodeModel> model = new SceneNodeModel;
    model->setName(toSceneString(object->GetName()));
    model->geometry_uid = meshUID;
    model->materials.reserve(materials.size());
    for (const SceneNodeUID uid : materials) {
        model->materials.push_back(exporter.root->getMaterial(uid));
    }
    return model;
}

void placeModel(SceneExporter& exporter, BaseObject* object, const Matrix& matrix, SceneNodeModel& model) {
    ExportContext& context = *exporter.context;
    if (exportMotionBlur(model.keyframes, object, matrix, context, exporter.objectChain, ::Vector())) {
        setModelRotationFromScale(model, matrix);
    } else {
        setModelStaticTransform(model, matrix, context.sceneScale);
    }
}

void addModel(SceneExporter& exporter, BaseObject* object, const Ref<SceneNodeModel>& model) {
    exporter.root->addChild(model);
    registerModel(exporter, object, model->getUID());
}

void registerModel(SceneExporter& exporter, BaseObject* object, SceneNodeUID uid) {
    BaseObject* known = object->GetTopOrigin();
    if (!known) {
        known = object->GetCacheParent();
    }
    if (!known) {
        known = object;
    }
    exporter.context->modelMap[known] = uid;
    for (const SectionPlaneObjects& entry : exporter.includingPlanes) {
        if (entry.objects->Contains(known)) {
            entry.plane->object_list.push_back(uid);
        }
    }
    for (const int32_t index : exporter.activeSectionPlanes) {
        exporter.excludingPlanes[static_cast<size_t>(index)].plane->object_list.push_back(uid);
    }
}
