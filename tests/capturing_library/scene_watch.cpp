// SPDX-License-Identifier: MIT
#include "capturing_library/scene_watch.h"

#include "capturing_library/capture_state.h"
#include "scene/scene_node.h"

#include <exception>
#include <thread>

namespace capture {

namespace {

std::string contentOf(Quenza::SceneNode& node) {
    try {
        return node.toXMLString().toStdString();
    } catch (const std::exception& exception) {
        return exception.what();
    }
}

} // namespace

void SceneWatch::look(bool held) {
    const std::array<Quenza::Ref<Quenza::SceneNode>, 3> nodes{root_->getToneMapping(), root_->getCamera(),
                                                              root_->getRenderSettings()};
    for (size_t i = 0; i < nodes.size(); ++i) {
        Seen now;
        now.node = nodes[i];
        if (now.node) {
            now.content = contentOf(*now.node);
            now.stamp = now.node->getStamp();
        }
        Seen& last = seen_[i];
        const bool differs = now.node && now.node == last.node && now.content != last.content;
        const std::string kind = now.node ? Quenza::getNodeTypeName(now.node->getType()) : "";
        if (differs && held) {
            captureState().violation(kind + " changed while the library held the root's mutex");
        } else if (differs && now.stamp <= last.stamp) {
            captureState().violation(kind + " changed without a new change stamp");
        }
        last = now;
    }
}

bool isMutexFree(Quenza::SceneNodeRoot* root) {
    if (!root) {
        return false;
    }
    // The mutex lets its own holder in again, so another thread must try.
    bool isFree = false;
    std::thread([&] {
        isFree = root->getMutex().tryLock();
        if (isFree) {
            root->getMutex().unlock();
        }
    }).join();
    return isFree;
}

} // namespace capture
