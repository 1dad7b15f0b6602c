// SPDX-License-Identifier: MIT
#include "headless/model/node_copies.h"

#include "headless/model/handles.h"

namespace headless {

std::unique_ptr<Node> NodeCopies::copyAlone(const Node& node) {
    std::unique_ptr<Node> made = node.makeEmpty();
    made->assign(node);
    pairs_.emplace_back(&node, made.get());
    return made;
}

std::unique_ptr<Node> NodeCopies::copy(const Node& node, Owned which) {
    // Pairs double as the list of nodes whose parts are still to be copied: hierarchies may be deep.
    size_t next = pairs_.size();
    std::unique_ptr<Node> top = copyAlone(node);
    for (; next < pairs_.size(); ++next) {
        const Node* const original = pairs_[next].first;
        Node* const made = pairs_[next].second;
        original->visitOwned(which, [&](Node& owned) { made->appendOwned(copyAlone(owned)); });
    }
    return top;
}

void NodeCopies::redirectLinks() {
    copies_.clear();
    copies_.reserve(pairs_.size());
    copies_.insert(pairs_.begin(), pairs_.end());
    for (const auto& [original, made] : pairs_) {
        made->visitLinks([this](BaseLink& link) {
            if (Node* const target = copyOf(fromHost(link.GetLink()))) {
                link.SetLink(toHost(target));
            }
        });
        if (made->kind() == NodeKind::document) {
            static_cast<Document*>(made)->adoptChoices(*static_cast<const Document*>(original),
                                                       [this](const Node* node) { return copyOf(node); });
        }
    }
}

Node* NodeCopies::copyOf(const Node* original) const {
    const auto found = copies_.find(original);
    return found == copies_.end() ? nullptr : found->second;
}

std::unique_ptr<Node> cloneNode(const Node& node, Owned which) {
    NodeCopies copies;
    std::unique_ptr<Node> top = copies.copy(node, which);
    copies.redirectLinks();
    return top;
}

} // namespace headless
