// SPDX-License-Identifier: MIT
#pragma once

namespace Quenza {
class SceneNodeRoot;
}

/// Adds the node that tells where the scene comes from.
void exportMetadata(Quenza::SceneNodeRoot& root);
