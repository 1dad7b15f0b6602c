// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/handles.h"

namespace headless {

/// Takes a node that a plug-in hands over out of the list that it may be in. Null for null, and for a node
/// that stays whose it is.
template <class Theirs>
auto adopt(Theirs* node) {
    using Ours = typename ModelClass<Theirs>::Type;
    return std::unique_ptr<Ours>(node ? static_cast<Ours*>(removeNode(*fromHost(node)).release()) : nullptr);
}

} // namespace headless
