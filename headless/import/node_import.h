// SPDX-License-Identifier: MIT
#pragma once

#include "headless/import/fixture_import.h"
#include "headless/import/model_space.h"
#include "headless/model/document.h"

#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace headless {

struct ImportedNodes {
    /// The objects of the model's nodes by the nodes' names, as the model has them. The first of a name
    /// counts.
    std::unordered_map<std::string, Object*> objects;
    size_t polygonCount = 0;
    /// Cameras, then lights, each in the model's order.
    std::vector<Object*> fixtures;
};

/// Adds an object to the document for each node of the model: a null, a polygon object, or a render instance
/// where a node shows the same meshes as one before it. A root that does nothing is left out, unless
/// `keepRoot` is set. Any depth.
///
/// A camera or light is the object of its node where the node shows nothing else and looks the same way, or
/// is neither moved nor a parent; else it is a child of it, and the node's object is called "... Pivot".
/// Scales of the nodes above don't act on cameras and lights, but on the sizes of areas.
ImportedNodes importNodes(const aiScene& scene, const ModelSpace& space, bool keepRoot,
                          std::span<Material* const> materials, std::vector<Fixture> fixtures,
                          Document& document, std::vector<std::string>& warnings);

} // namespace headless
