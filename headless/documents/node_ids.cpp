// SPDX-License-Identifier: MIT
#include "headless/documents/node_ids.h"

#include "headless/model/handles.h"
#include "headless/model/node_types.h"

#include <algorithm>
#include <unordered_set>

namespace headless {

namespace {

std::string baseName(const Node& node) {
    if (!node.name.empty()) {
        return node.name;
    }
    const NodeTypeInfo* const type = NodeTypes::instance().find(node.type());
    return type && !type->name.empty() ? type->name : "node";
}

} // namespace

std::vector<Node*> nodesOf(const Document& document) {
    std::vector<Node*> nodes;
    std::vector<Node*> waiting;
    const auto visitBackwards = [&waiting](const Node& node) {
        const size_t first = waiting.size();
        node.visitOwned(Owned::all, [&waiting](Node& owned) { waiting.push_back(&owned); });
        std::reverse(waiting.begin() + static_cast<std::ptrdiff_t>(first), waiting.end());
    };
    visitBackwards(document);
    while (!waiting.empty()) {
        Node* const node = waiting.back();
        waiting.pop_back();
        nodes.push_back(node);
        visitBackwards(*node);
    }
    return nodes;
}

NodeIds::NodeIds(const Document& document) {
    const std::vector<Node*> nodes = nodesOf(document);
    std::unordered_set<const Node*> wanted;
    wanted.insert(document.view().chosenCamera());
    for (Node* const node : nodes) {
        node->visitLinks([&wanted](const BaseLink& link) {
            const Node* const target = fromHost(link.GetLink());
            // Layers are called by their names.
            if (target && target->kind() != NodeKind::layer) {
                wanted.insert(target);
            }
        });
    }
    std::unordered_map<std::string, int> nextNumber;
    std::unordered_set<std::string> taken;
    for (const Node* const node : nodes) {
        if (!wanted.contains(node)) {
            continue;
        }
        const std::string base = baseName(*node);
        std::string id = base;
        for (int& number = nextNumber.try_emplace(base, 2).first->second; !taken.insert(id).second;) {
            id = base + " " + std::to_string(number++);
        }
        ids_.emplace(node, std::move(id));
    }
}

const std::string* NodeIds::idOf(const Node* node) const {
    const auto found = ids_.find(node);
    return found == ids_.end() ? nullptr : &found->second;
}

} // namespace headless
