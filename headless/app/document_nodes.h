// SPDX-License-Identifier: MIT
#pragma once

#include "headless/app/arguments.h"
#include "headless/app/closest_names.h"
#include "headless/model/document.h"

#include <algorithm>
#include <string>
#include <vector>

namespace headless {

/// All objects as the hierarchy shows them.
std::vector<Object*> objectsOf(const Document& document);
std::vector<Material*> materialsOf(const Document& document);

/// Those of `nodes` that are called `name`. Throws UsageError, with the names that are close, when there is
/// none; `what` is "object" or "material".
template <typename NodeClass>
std::vector<NodeClass*> nodesNamed(const std::string& name, std::vector<NodeClass*> nodes, const char* what) {
    std::vector<std::string> known;
    for (const NodeClass* const node : nodes) {
        known.push_back(node->name);
    }
    std::erase_if(nodes, [&name](const NodeClass* node) { return node->name != name; });
    if (nodes.empty()) {
        throw UsageError("The document has no " + std::string(what) + " \"" + name + "\"" +
                         suggestion(name, known));
    }
    return nodes;
}

} // namespace headless
