// SPDX-License-Identifier: MIT
#pragma once

#include "host/object.h"

class SceneExporter;
struct ExportedMesh;

/// Adds a model of the polygon object, and its mesh unless the scene has an equal one.
void exportPolygonObject(SceneExporter& exporter, PolygonObject* object, const Matrix& matrix,
                         bool invisibleToCamera);

/// The node of the object's mesh, new unless the scene has an equal one, with a material for each slot: the
/// object's own, or for the geometry of a light the last light material.
ExportedMesh exportMesh(SceneExporter& exporter, PolygonObject* object, bool isLightGeometry);
