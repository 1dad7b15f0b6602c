// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

class BaseObject;
class PolygonObject;
class SceneExporter;
struct ExportedMesh;

enum class LightKind { SPOT = 1, AREA = 2 };

/// The renderer has no lights but geometry that shines: adds a light as a sphere, a plane with an IES
/// profile, or the shape of an area light. False when nothing was added: the kind of light isn't supported or
/// its shape couldn't be made.
bool exportLight(SceneExporter& exporter, BaseObject* light, const Matrix& matrix, bool invisibleToCamera);

/// Adds a model of the mesh that shines with the last light material. It has the name of `geometry`, and
/// belongs to `light`.
void exportLightModel(SceneExporter& exporter, PolygonObject* geometry, const ExportedMesh& mesh,
                      const Matrix& matrix, LightKind kind, BaseObject* light, bool invisibleToCamera);
