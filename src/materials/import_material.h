// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"
#include "materials/import_warnings.h"
#include "scene/scene_node_root.h"

class BaseDocument;

/// Makes a material of the plug-in in `document` for each of the scene's materials, with those that these
/// refer to. Of several materials of one name the first counts. Relative texture paths start at `directory`.
/// `warnings` gets what couldn't be taken over.
void importMaterials(BaseDocument& document, const Quenza::SceneNodeRoot& root, const Filename& directory,
                     ImportWarnings& warnings);
