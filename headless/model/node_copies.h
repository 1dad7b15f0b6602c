// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/node.h"

#include <unordered_map>
#include <vector>

namespace headless {

/// Copies of nodes with all below them. First everything is copied, then links are led to the copies.
class NodeCopies {
public:
    /// A copy outside any document. Its links still lead where those of `node` lead.
    std::unique_ptr<Node> copy(const Node& node, Owned which = Owned::all);
    /// Leads links from copies to originals that were copied to the copies.
    void redirectLinks();

    /// Null for a node that wasn't copied.
    Node* copyOf(const Node* original) const;
    /// Originals with their copies, parents first.
    const std::vector<std::pair<const Node*, Node*>>& pairs() const { return pairs_; }

private:
    std::unique_ptr<Node> copyAlone(const Node& node);

    std::vector<std::pair<const Node*, Node*>> pairs_;
    std::unordered_map<const Node*, Node*> copies_;
};

} // namespace headless
