// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/uid.h"
#include "host/string.h"
#include "scene/scene_node_root.h"

class BaseMaterial;
struct ExportContext;

/// The scene's material of a host's material. It is exported when it's met for the first time, with all that
/// it refers to; materials that refer to each other in a circle are too. One that isn't the plug-in's is
/// converted on the way. Invalid for null, and when the conversion fails.
Quenza::SceneNodeUID getMaterialUID(BaseMaterial* material, Quenza::SceneNodeRoot& root,
                                    ExportContext& context);

/// Exports a material of the plug-in's type under a name, and makes it the scene's material of `key`. Invalid
/// when one of them is null.
Quenza::SceneNodeUID exportMaterial(BaseMaterial* material, const String& name, Quenza::SceneNodeRoot& root,
                                    ExportContext& context, BaseMaterial* key);

/// Adds "nullMat", which lets everything through; the context gets its UID.
void exportNullMaterial(Quenza::SceneNodeRoot& root, ExportContext& context);
