// SPDX-License-Identifier: MIT
#include "export/model_transform.h"

#include "shared/scene_space.h"

Quenza::KeyFrame staticKeyframe(const Matrix& matrix, float sceneScale) {
    return {toSceneSpaceDouble(matrix.off * sceneScale), 0.0, {0.0, 0.0, 1.0}, 0.0};
}

void setModelStaticTransform(Quenza::SceneNodeModel& model, const Matrix& matrix, float sceneScale) {
    model.keyframes.push_back(staticKeyframe(matrix, sceneScale));
    model.rotation = new Quenza::MatrixRotation(toSceneSpace(matrix));
}

void setModelRotationFromScale(Quenza::SceneNodeModel& model, const Matrix& matrix) {
    const Quenza::Vec3d lengths =
        toSceneSpaceDouble({matrix.axisX.GetLength(), matrix.axisY.GetLength(), matrix.axisZ.GetLength()});
    model.rotation = new Quenza::MatrixRotation(
        Quenza::Matrix3d{{lengths.x, 0.0, 0.0, 0.0, lengths.y, 0.0, 0.0, 0.0, lengths.z}});
}
