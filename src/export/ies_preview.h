// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"
#include "scene/scene_node_root.h"

class BaseList2D;

/// A small room in which one lamp with the distribution of an IES file shines down along a wall.
Quenza::Ref<Quenza::SceneNodeRoot> makeIESPreviewScene(const Filename& iesFile);

/// Writes the preview scene of a light tag's IES file, or of the default one, to the system's temporary
/// folder and opens it in the renderer. Failures are told on the host's console. Main thread.
void showIESPreview(const BaseList2D& lightTag);
