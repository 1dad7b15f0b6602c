// SPDX-License-Identifier: MIT
#include "headless/model/document.h"

namespace headless {

std::unique_ptr<Node> removeNode(Node& node) {
    Document* const document = node.document();
    std::unique_ptr<Node> removed;
    switch (node.kind()) {
    case NodeKind::object: {
        auto& object = static_cast<Object&>(node);
        if (object.cacheParent()) {
            return nullptr;
        }
        if (object.parent_) {
            removed = object.parent_->children_.remove(object);
            object.parent_ = nullptr;
        } else if (document) {
            removed = document->objects_.remove(object);
        }
        break;
    }
    case NodeKind::tag: {
        auto& tag = static_cast<Tag&>(node);
        if (tag.object()) {
            return tag.object()->removeTag(tag);
        }
        break;
    }
    case NodeKind::material:
        if (document) {
            removed = document->materials_.remove(static_cast<Material&>(node));
        }
        break;
    case NodeKind::shader: {
        auto& shader = static_cast<Shader&>(node);
        if (shader.parent_) {
            removed = shader.parent_->children_.remove(shader);
            shader.parent_ = nullptr;
        } else if (shader.material_) {
            removed = shader.material_->shaders_.remove(shader);
            shader.material_ = nullptr;
        }
        break;
    }
    case NodeKind::videoPost: {
        auto& videoPost = static_cast<VideoPost&>(node);
        if (videoPost.renderData_) {
            removed = videoPost.renderData_->videoPosts_.remove(videoPost);
            videoPost.renderData_ = nullptr;
        }
        break;
    }
    case NodeKind::renderData:
        if (document) {
            removed = document->renderData_.remove(static_cast<RenderDataNode&>(node));
            if (document->activeRenderData_ == &node) {
                document->activeRenderData_ = document->renderData_.first();
            }
        }
        break;
    case NodeKind::layer: {
        auto& layer = static_cast<Layer&>(node);
        if (layer.parent_) {
            removed = layer.parent_->children_.remove(layer);
            layer.parent_ = nullptr;
        } else if (document) {
            return nullptr;
        }
        layer.updateFlags();
        break;
    }
    case NodeKind::document:
        return nullptr;
    }
    node.setDocument(nullptr);
    return removed ? std::move(removed) : std::unique_ptr<Node>(&node);
}

} // namespace headless
