// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

class BaseObject;
class SceneExporter;

/// True for a sphere primitive that the renderer can draw as an exact sphere under this matrix.
bool isAnalyticSphere(const SceneExporter& exporter, const BaseObject* object, const Matrix& matrix);

/// Adds an analytic sphere to the scene. It isn't registered: section planes don't see it.
void exportSphere(SceneExporter& exporter, BaseObject* object, const Matrix& matrix, bool useLightMaterial);
