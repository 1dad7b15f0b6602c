// SPDX-License-Identifier: MIT
#include "export/sphere_export.h"

#include "export/model_transform.h"
#include "export/motion_blur.h"
#include "export/scene_exporter.h"
#include "export/texture_tags.h"
#include "host/ids.h"
#include "host/tag.h"
#include "materials/material_export.h"
#include "scene/scene_node_sphere.h"

#include <cmath>

namespace {

bool isUniform(const Matrix& matrix) {
    constexpr float TOLERANCE = 1e-7f;
    const float x = matrix.axisX.GetLength();
    return std::fabs(x - matrix.axisY.GetLength()) < TOLERANCE &&
           std::fabs(x - matrix.axisZ.GetLength()) < TOLERANCE;
}

Quenza::SceneNodeUID findMaterial(SceneExporter& exporter, const BaseObject* object) {
    ExportContext& context = *exporter.context;
    const TextureTag* const tag = findTextureTag(object, nullptr);
    const Quenza::SceneNodeUID uid =
        getMaterialUID(tag ? tag->GetMaterial() : nullptr, *exporter.root, context);
    return uid.isValid() ? uid : context.defaultMaterialUID;
}

} // namespace

bool isAnalyticSphere(const SceneExporter& exporter, const BaseObject* object, const Matrix& matrix) {
    const BaseContainer* const data = object->GetDataInstance();
    return isUniform(matrix) && data->GetBool(PRIM_SPHERE_PERFECT) &&
           data->GetLong(PRIM_SPHERE_TYPE) != PRIM_SPHERE_TYPE_HEMISPHERE && !exporter.context->gpuRendering;
}

void exportSphere(SceneExporter& exporter, BaseObject* object, const Matrix& matrix, bool useLightMaterial) {
    ExportContext& context = *exporter.context;
    const Quenza::Ref<Quenza::SceneNodeSphere> node = new Quenza::SceneNodeSphere;
    if (!exportMotionBlur(node->keyframes, object, matrix, context, exporter.objectChain, Vector())) {
        node->keyframes.push_back(staticKeyframe(matrix, context.sceneScale));
    }
    const float radius = object->GetDataInstance()->GetReal(PRIM_SPHERE_RAD, 1.0f);
    node->radius = static_cast<double>(radius * context.sceneScale * matrix.axisX.GetLength());
    node->material_uid = useLightMaterial ? context.lightMaterialUID : findMaterial(exporter, object);
    exporter.root->addChild(node);
}
