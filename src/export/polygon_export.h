// SPDX-License-Identifier: MIT
#pragma once

#include "host/object.h"

class SceneExporter;

/// Adds a model of the polygon object, and its mesh unless the scene has an equal one.
void exportPolygonObject(SceneExporter& exporter, PolygonObject* object, const Matrix& matrix,
                         bool invisibleToCamera);
