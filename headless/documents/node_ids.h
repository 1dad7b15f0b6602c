// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

#include <string>
#include <unordered_map>

namespace headless {

/// Names for the nodes of a document that something refers to, made of the nodes' own names.
class NodeIds {
public:
    explicit NodeIds(const Document& document);

    /// Null for a node that nothing refers to, or that is of another document or a cache.
    const std::string* idOf(const Node* node) const;

private:
    std::unordered_map<const Node*, std::string> ids_;
};

/// The nodes of a document in its order: layers, materials, objects, render setups, each with all below it.
std::vector<Node*> nodesOf(const Document& document);

} // namespace headless
