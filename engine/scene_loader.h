// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "scene/scene_node_root.h"

#include <string>

namespace engine {

/// Reads a scene with its meshes and binds its references. `data_folder` is the renderer's own; an
/// inifile.xml there gives defaults. `extra_settings` is the inside of a renderer_settings element, or empty.
/// Throws an exception that tells what is wrong with the scene.
Quenza::Ref<Quenza::SceneNodeRoot> loadScene(const std::string& path, const std::string& data_folder,
                                             const std::string& extra_settings);

} // namespace engine
