// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"
#include "reading/mesh_report.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace Quenza {

struct MaterialSummary {
    std::string name;
    u32 uid = 0;
    /// Element name of its class ("phong"), empty for a node without a material.
    std::string type;
};

/// What a scene file holds and what is wrong with it.
struct SceneSummary {
    std::string path;
    /// Element name of the node to how many there are, those of included files too.
    std::map<std::string, u64> nodes;
    std::vector<MaterialSummary> materials;
    std::vector<MeshSummary> meshes;
    /// Files that the scene names, meshes among them, each once, as it names them.
    std::vector<std::string> files;
    /// Those of them that aren't there; each is a fault as well.
    std::vector<std::string> missing_files;
    /// One line each; with line and column of the scene file where there is a place to tell.
    std::vector<std::string> faults;
    /// Elements of the scene that could not be read: reading an element stops at its first fault, so there
    /// may be more in each of them.
    u64 unread_elements = 0;
};

/// Says what is wrong with an image file, "" when it can be read.
using ImageProbe = std::function<std::string(const std::string& path)>;

/// Reads a scene element by element, and its meshes, and checks what a renderer relies on: that the document
/// is whole and every element says what it may, that UIDs are unique and references lead to nodes of the
/// right type, that meshes read and index within their arrays, that files exist and images have a size that
/// can be drawn. An element that can't be read costs only what it holds itself; nodes that refer to it aren't
/// blamed. Textures are told by the parameter that shows them, and probed with `probe` when there is one.
/// Never throws for a bad scene: the summary then tells its faults. Meshes are held one at a time.
SceneSummary summariseScene(const std::string& path, const ImageProbe& probe = nullptr);

/// What is wrong with a `--settings` argument, the inside of a `renderer_settings` element; a line each.
std::vector<std::string> faultsOfExtraSettings(const std::string& text);

} // namespace Quenza
