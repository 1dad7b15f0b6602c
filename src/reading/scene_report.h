// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"
#include "foundation/vec.h"

#include <map>
#include <string>
#include <vector>

namespace Quenza {

/// What a mesh of a scene holds. Bounds are in the mesh's space, in metres.
struct MeshSummary {
    std::string name;
    std::string path;
    u64 vertices = 0;
    u64 triangles = 0;
    u64 quads = 0;
    u64 uvs = 0;
    u32 materials = 0;
    Vec3f bounds_min{};
    Vec3f bounds_max{};
};

/// What a scene file holds and what is wrong with it.
struct SceneSummary {
    std::string path;
    /// Element name of the node to how many there are.
    std::map<std::string, u64> nodes;
    std::vector<MeshSummary> meshes;
    /// Paths that the scene names and that aren't there; each is a fault as well.
    std::vector<std::string> missing_files;
    /// One line each; with line and column of the scene file where there is a place to tell.
    std::vector<std::string> faults;
};

/// Reads a scene and its meshes and checks what a renderer relies on: that the document is whole, that UIDs
/// are unique and references lead to nodes of the right type, that meshes read and index within their arrays,
/// and that files exist. Never throws for a bad scene: the summary then tells its faults.
SceneSummary summariseScene(const std::string& path);

/// One frame of a render queue.
struct QueueItem {
    std::string scene_path;
    std::string output_path;
    double halt_time = -1;
    double halt_spp = -1;
    std::string seed;
};

struct QueueSummary {
    std::string path;
    std::vector<QueueItem> items;
    std::vector<std::string> faults;
};

/// Reads a render queue; the scenes that it names aren't opened.
QueueSummary summariseQueue(const std::string& path);

} // namespace Quenza
