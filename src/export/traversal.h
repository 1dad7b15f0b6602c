// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

class BaseObject;
class SceneExporter;

/// Walks the document's objects with their caches. Pass 0 gathers light shapes and section planes; pass 1
/// adds models, spheres and lights to the scene.
void traverse(SceneExporter& exporter, int pass);

/// Walks `object` with all below it, and its next siblings unless `singleObject` is set: then `parentMatrix`
/// is the object's own matrix. `visible` and `invisibleToCamera` are inherited. Always true.
bool walkObjects(SceneExporter& exporter, BaseObject* object, const Matrix& parentMatrix, bool singleObject,
                 bool visible, const bool* invisibleToCamera);

/// What becomes of one object at `matrix`. Nothing when it isn't visible or is input of a generator. Always
/// true.
bool handleObject(SceneExporter& exporter, BaseObject* object, const Matrix& matrix, bool visible,
                  bool isControlObject, const bool* invisibleToCamera);
