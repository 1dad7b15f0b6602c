// SPDX-License-Identifier: MIT
#include "reading/node_numbering.h"

#include <algorithm>
#include <vector>

namespace Quenza {

void addNumberedNodes(SceneNodeRoot& root, const NodeList& nodes) {
    // In order, not hashed: whoever writes a file chooses its UIDs.
    std::vector<u32> used{root.getUID().value(), SceneNodeUID::INVALID_VALUE};
    u32 highest = 0;
    for (const Ref<SceneNode>& node : nodes) {
        if (!node->getUID().isValid())
            continue;
        used.push_back(node->getUID().value());
        highest = std::max(highest, used.back());
    }
    std::sort(used.begin(), used.end());
    root.setNextUID(highest);
    for (const Ref<SceneNode>& node : nodes) {
        if (node->getUID().isValid())
            continue;
        u32 number = root.allocateUID();
        while (std::binary_search(used.begin(), used.end(), number)) // behind the last the count starts anew
            number = root.allocateUID();
        node->setUID(SceneNodeUID(number));
    }
    for (const Ref<SceneNode>& node : nodes)
        root.addChild(node);
}

} // namespace Quenza
