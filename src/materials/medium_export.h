// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/uid.h"
#include "host/string.h"
#include "scene/scene_node_root.h"

class BaseMaterial;
struct ExportContext;

/// The medium inside of things of the material `source`, added to the scene when it's met for the first time,
/// under a name made of `name`. A material that takes the medium of another leads on to that one; where the
/// links lead in a circle, the first material of the circle gives its own. `key` is the material that the
/// document knows, which is `source` itself unless that is a temporary one.
Quenza::SceneNodeUID exportMedium(const BaseMaterial* source, const String& name, Quenza::SceneNodeRoot& root,
                                  ExportContext& context, BaseMaterial* key);
