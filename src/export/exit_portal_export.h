// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/uid.h"
#include "host/vector.h"

#include <cstddef>

class BaseObject;
class SceneExporter;

/// Adds a model of a mesh whose every material slot is an exit portal.
void exportExitPortal(SceneExporter& exporter, BaseObject* object, Quenza::SceneNodeUID meshUID,
                      const Matrix& matrix, size_t slotCount);
