// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/types.h"
#include "scene/scene_node_root.h"

#include <array>
#include <string>

namespace capture {

/// Looks whether the nodes that change during a render change as agreed. The root's mutex guards it.
class SceneWatch {
public:
    explicit SceneWatch(const Quenza::Ref<Quenza::SceneNodeRoot>& root) : root_(root) {}

    Quenza::SceneNodeRoot& root() const { return *root_; }
    /// A node whose content differs from the last look must have a newer change stamp; with
    /// `held`, the mutex was held ever since the last look, and it must not differ at all.
    void look(bool held);

private:
    struct Seen {
        Quenza::Ref<Quenza::SceneNode> node;
        std::string content;
        Quenza::u64 stamp = 0;
    };

    Quenza::Ref<Quenza::SceneNodeRoot> root_;
    std::array<Seen, 3> seen_;
};

/// The other side of an operation that the caller must hold the root's mutex for: true when it is free, so
/// that the caller doesn't hold it. `root` may be null.
bool isMutexFree(Quenza::SceneNodeRoot* root);

} // namespace capture
