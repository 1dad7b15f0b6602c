// SPDX-License-Identifier: MIT
#include "headless/build/animation.h"

#include "headless/model/track.h"

namespace headless {

namespace {

/// A node and all that it owns.
void animateBranch(Node& top, double seconds) {
    std::vector<Node*> waiting{&top};
    while (!waiting.empty()) {
        Node& node = *waiting.back();
        waiting.pop_back();
        applyTracks(node, seconds);
        node.visitOwned(Owned::all, [&waiting](Node& owned) { waiting.push_back(&owned); });
    }
}

} // namespace

void animateObject(Object& object, const BaseTime& time) {
    animateBranch(object, time.Get());
}

void animateDocument(Document& document) {
    const double seconds = document.time.Get();
    animateBranch(document, seconds);
    animateBranch(document.view().editorCamera(), seconds);
}

} // namespace headless
