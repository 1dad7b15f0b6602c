// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

class BaseObject;
class SceneExporter;

/// Adds a section plane to the scene and remembers the objects that it concerns: their models add themselves
/// as they come.
void exportSectionPlane(SceneExporter& exporter, const BaseObject* object, const Matrix& matrix);
