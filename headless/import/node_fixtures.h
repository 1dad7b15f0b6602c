// SPDX-License-Identifier: MIT
#pragma once

#include "headless/import/fixture_import.h"

#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace headless {

/// A model's cameras and lights while they wait for their nodes, and what is to be set right when all stand.
class NodeFixtures {
public:
    NodeFixtures(const aiScene& scene, std::vector<Fixture> fixtures);

    bool has(const aiNode& node) const { return waiting_.contains(node.mName.C_Str()); }
    /// Those of a node. The first node of a name gets them.
    std::vector<std::unique_ptr<Object>> take(const aiNode& node);
    /// True when the object can take the place of the node: nothing hangs on the node's own axes.
    bool canStandFor(const aiNode& node, const Object& object) const;

    /// To be called when the tree stands: takes the scales of the nodes above out of cameras and lights, and
    /// warns of those that found no node. Returns the ones that did, in the model's order.
    std::vector<Object*> finish(std::vector<std::string>& warnings) const;

private:
    std::vector<Fixture> fixtures_;
    /// Numbers of the fixtures by their nodes' names.
    std::unordered_map<std::string, std::vector<size_t>> waiting_;
    /// The objects of the fixtures that were taken, in the model's order; null for the others.
    std::vector<Object*> placed_;
    std::unordered_set<std::string> animated_;
};

} // namespace headless
