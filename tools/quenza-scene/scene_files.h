// SPDX-License-Identifier: MIT
#pragma once

#include "scene/scene_node_root.h"

#include <functional>
#include <string>

/// Whole scenes as the commands read and change them. Failures are exceptions with a text for people.
namespace scene_tool {

/// The fault with `path` before it, unless it names the file itself.
std::string faultOfFile(const std::string& path, const std::string& fault);

/// Does `work`; what fails in it becomes a faultOfFile, for a command reads more files than one.
void namingFile(const std::string& path, const std::function<void()>& work);

/// Reads a scene and binds its references. Mesh files are left alone: nodes hold their paths. A node with a
/// mesh in the scene itself holds that mesh and no path.
Quenza::Ref<Quenza::SceneNodeRoot> readScene(const std::string& path);

/// Writes the scene file, and beside it the files of meshes that its nodes hold.
void writeScene(Quenza::SceneNodeRoot& root, const std::string& path);

/// The files that the nodes name, each once, in the order of their first mention.
std::vector<std::string> collectFiles(Quenza::SceneNodeRoot& root);

/// Gives every path that a node names the form that `renamed` has for it.
void renameFiles(Quenza::SceneNodeRoot& root, const std::function<std::string(const std::string&)>& renamed);

/// Makes the paths of a scene that was read from `from` lead to the same files from a scene at `to`.
void moveScene(Quenza::SceneNodeRoot& root, const std::string& from, const std::string& to);

/// `path` as the scene at `scene_path` means it.
std::string resolvedPath(const std::string& scene_path, const std::string& path);

} // namespace scene_tool
