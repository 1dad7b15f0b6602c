// SPDX-License-Identifier: MIT
#include "headless/model/undo.h"

#include "headless/model/handles.h"
#include "headless/model/node_copies.h"

namespace headless {

namespace {

Node* targetOf(const BaseLink& link) {
    return fromHost(link.GetLink());
}

/// The node whose list holds `node`, the document for the top lists, and its predecessor in the list.
std::pair<Node*, Node*> placeOf(const Node& node) {
    switch (node.kind()) {
    case NodeKind::object: {
        const auto& object = static_cast<const Object&>(node);
        return {object.parent() ? static_cast<Node*>(object.parent()) : node.document(), object.pred};
    }
    case NodeKind::tag: {
        const auto& tag = static_cast<const Tag&>(node);
        return {tag.object(), tag.pred};
    }
    case NodeKind::material:
        return {node.document(), static_cast<const Material&>(node).pred};
    case NodeKind::shader: {
        const auto& shader = static_cast<const Shader&>(node);
        return {shader.parent() ? static_cast<Node*>(shader.parent()) : shader.material(), shader.pred};
    }
    case NodeKind::videoPost: {
        const auto& videoPost = static_cast<const VideoPost&>(node);
        return {videoPost.renderData(), videoPost.pred};
    }
    case NodeKind::renderData:
        return {node.document(), static_cast<const RenderDataNode&>(node).pred};
    case NodeKind::layer: {
        const auto& layer = static_cast<const Layer&>(node);
        return {layer.parent(), layer.pred};
    }
    case NodeKind::document:
        break;
    }
    return {nullptr, nullptr};
}

template <class T>
std::unique_ptr<T> as(std::unique_ptr<Node> node) {
    return std::unique_ptr<T>(static_cast<T*>(node.release()));
}

/// `behind` where it still is in the list of `owner`, else null: the node comes first then.
template <class T>
T* stillIn(Node& owner, Node* behind) {
    return behind && placeOf(*behind).first == &owner ? static_cast<T*>(behind) : nullptr;
}

void insertAt(std::unique_ptr<Node> node, Node& owner, Node* behind) {
    const bool atTop = owner.kind() == NodeKind::document;
    auto& document = static_cast<Document&>(owner);
    switch (node->kind()) {
    case NodeKind::object:
        if (atTop) {
            document.insertObject(as<Object>(std::move(node)), nullptr, stillIn<Object>(owner, behind));
        } else {
            static_cast<Object&>(owner).insertChild(as<Object>(std::move(node)),
                                                    stillIn<Object>(owner, behind));
        }
        break;
    case NodeKind::tag:
        static_cast<Object&>(owner).insertTag(as<Tag>(std::move(node)), stillIn<Tag>(owner, behind));
        break;
    case NodeKind::material:
        document.insertMaterial(as<Material>(std::move(node)), stillIn<Material>(owner, behind));
        break;
    case NodeKind::shader:
        if (owner.kind() == NodeKind::material) {
            static_cast<Material&>(owner).insertShader(as<Shader>(std::move(node)),
                                                       stillIn<Shader>(owner, behind));
        } else {
            static_cast<Shader&>(owner).insertChild(as<Shader>(std::move(node)),
                                                    stillIn<Shader>(owner, behind));
        }
        break;
    case NodeKind::videoPost:
        static_cast<RenderDataNode&>(owner).insertVideoPost(as<VideoPost>(std::move(node)),
                                                            stillIn<VideoPost>(owner, behind));
        break;
    case NodeKind::renderData:
        document.insertRenderData(as<RenderDataNode>(std::move(node)),
                                  stillIn<RenderDataNode>(owner, behind));
        break;
    case NodeKind::layer:
        static_cast<Layer&>(owner).insertChild(as<Layer>(std::move(node)), stillIn<Layer>(owner, behind));
        break;
    case NodeKind::document:
        break;
    }
}

} // namespace

UndoStep::UndoStep(UndoType stepType, Node& target) : type(stepType), node(toHost(&target)) {
    if (type == UNDOTYPE_CHANGE) {
        std::vector<Node*> changing{&target};
        for (size_t i = 0; i < changing.size(); ++i) {
            std::unique_ptr<Node> copy = changing[i]->makeEmpty();
            copy->assign(*changing[i]);
            copies.emplace_back(BaseLink(toHost(changing[i])), std::move(copy));
            changing[i]->visitOwned(Owned::parts, [&changing](Node& part) { changing.push_back(&part); });
        }
    } else if (type == UNDOTYPE_DELETE) {
        const auto [holder, predecessor] = placeOf(target);
        owner.SetLink(toHost(holder));
        behind.SetLink(toHost(predecessor));
        // Links inside the copy keep leading to the originals: their tokens are what the copies take over.
        NodeCopies made;
        copies.emplace_back(node, made.copy(target));
        for (const auto& [original, copy] : made.pairs()) {
            if (original->linkToken()) {
                successors.emplace_back(const_cast<Node*>(original)->acquireLinkToken(), copy);
            }
        }
    }
}

UndoStep::UndoStep(UndoStep&&) noexcept = default;

UndoStep::~UndoStep() {
    for (const auto& [token, copy] : successors) {
        if (token->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete token;
        }
    }
}

void UndoStack::start() {
    if (depth_++ == 0) {
        groups_.emplace_back();
        if (groups_.size() > maxGroups) {
            groups_.pop_front();
        }
    }
}

void UndoStack::add(UndoType type, Node& node) {
    start();
    groups_.back().emplace_back(type, node);
    end();
}

void UndoStack::end() {
    if (depth_ > 0 && --depth_ == 0 && groups_.back().empty()) {
        groups_.pop_back();
    }
}

bool UndoStack::undo() {
    if (depth_ > 0 || groups_.empty()) {
        return false;
    }
    std::vector<UndoStep> group = std::move(groups_.back());
    groups_.pop_back();
    for (auto step = group.rbegin(); step != group.rend(); ++step) {
        takeBack(*step);
    }
    return true;
}

void UndoStack::takeBack(UndoStep& step) {
    Node* const node = targetOf(step.node);
    switch (step.type) {
    case UNDOTYPE_CHANGE:
        for (const auto& [link, copy] : step.copies) {
            if (Node* const changed = targetOf(link)) {
                changed->assign(*copy);
            }
        }
        break;
    case UNDOTYPE_NEW:
        if (node && node->document() == &document_) {
            removeNode(*node); // Destroys it.
        }
        break;
    case UNDOTYPE_DELETE:
        if (!node || node->document() != &document_) {
            reinsert(step);
        }
        break;
    }
}

void UndoStack::reinsert(UndoStep& step) {
    Node* const owner = targetOf(step.owner);
    if (!owner || (owner != &document_ && owner->document() != &document_)) {
        return;
    }
    for (const auto& [token, copy] : step.successors) {
        // A node that was taken out but still lives keeps its links.
        if (!token->target.load()) {
            copy->adoptLinkToken(*token);
        }
    }
    insertAt(std::move(step.copies.front().second), *owner, targetOf(step.behind));
}

} // namespace headless
