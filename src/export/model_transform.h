// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"
#include "scene/keyframe.h"
#include "scene/scene_node_model.h"

/// The keyframe of an object that stands still at a matrix of the host; lengths are multiplied by
/// `sceneScale`.
Quenza::KeyFrame staticKeyframe(const Matrix& matrix, float sceneScale);

/// Gives the model one keyframe, and the matrix's axes with scale and shear as its rotation.
void setModelStaticTransform(Quenza::SceneNodeModel& model, const Matrix& matrix, float sceneScale);

/// Gives the model the lengths of the matrix's axes as its rotation: keyframes of a moving object turn it.
void setModelRotationFromScale(Quenza::SceneNodeModel& model, const Matrix& matrix);
