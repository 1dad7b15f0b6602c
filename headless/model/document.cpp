// SPDX-License-Identifier: MIT
#include "headless/model/document.h"

#include "headless/model/node_types.h"

#include <algorithm>

namespace headless {

namespace {

Document* active = nullptr;

} // namespace

Document* activeDocument() {
    return active;
}

void setActiveDocument(Document* document) {
    active = document;
}

Document::Document() : Node(NodeKind::document, ID_DOCUMENT) {
    layerRoot_.setDocument(this);
    setActiveRenderData(insertRenderData(createRenderData(), nullptr));
}

Document::~Document() {
    if (active == this) {
        active = nullptr;
    }
    retire();
    // Objects link to what is below, and go first.
    destroyTree(objects_, [](Object& object) -> Chain<Object>& {
        object.parent_ = nullptr;
        return object.children_;
    });
    materials_.clear();
    renderData_.clear();
}

Object& Document::insertObject(std::unique_ptr<Object> object, Object* parent, Object* behind) {
    Object* const under = behind ? behind->parent() : parent;
    if (under) {
        return under->insertChild(std::move(object), behind);
    }
    Object& added = objects_.insert(std::move(object), behind);
    added.setDocument(this);
    return added;
}

Object& Document::appendObject(std::unique_ptr<Object> object) {
    return insertObject(std::move(object), nullptr, objects_.last());
}

Material& Document::insertMaterial(std::unique_ptr<Material> material, Material* behind) {
    Material& added = materials_.insert(std::move(material), behind);
    added.setDocument(this);
    return added;
}

RenderDataNode& Document::insertRenderData(std::unique_ptr<RenderDataNode> renderData,
                                           RenderDataNode* behind) {
    RenderDataNode& added = renderData_.insert(std::move(renderData), behind);
    added.setDocument(this);
    if (!activeRenderData_) {
        activeRenderData_ = &added;
    }
    return added;
}

void Document::setFps(int32_t fps) {
    fps_ = std::max(fps, 1);
}

void Document::assign(const Node& source) {
    Node::assign(source);
    const auto& other = static_cast<const Document&>(source);
    fps_ = other.fps_;
    time = other.time;
    minTime = other.minTime;
    maxTime = other.maxTime;
    path = other.path;
    fileName = other.fileName;
    view_.width = other.view_.width;
    view_.height = other.view_.height;
    view_.editorCamera().assign(other.view_.editorCamera());
}

std::unique_ptr<Node> Document::makeEmpty() const {
    auto made = std::make_unique<Document>();
    made->activeRenderData_ = nullptr;
    made->renderData_.clear();
    return made;
}

void Document::adoptChoices(const Document& source, const std::function<Node*(const Node*)>& copyOf) {
    if (Node* const renderData = copyOf(source.activeRenderData_)) {
        activeRenderData_ = static_cast<RenderDataNode*>(renderData);
    }
    view_.setSceneCamera(static_cast<Object*>(copyOf(source.view_.chosenCamera())));
}

void Document::visitOwned(Owned which, const std::function<void(Node&)>& visit) const {
    if (which != Owned::all) {
        return;
    }
    const auto visitAll = [&visit](auto* node) {
        for (; node; node = node->next) {
            visit(*node);
        }
    };
    visitAll(layers().first());
    visitAll(materials_.first());
    visitAll(objects_.first());
    visitAll(renderData_.first());
}

void Document::appendOwned(std::unique_ptr<Node> node) {
    Node* const owned = node.release();
    switch (owned->kind()) {
    case NodeKind::layer:
        appendLayer(std::unique_ptr<Layer>(static_cast<Layer*>(owned)));
        break;
    case NodeKind::material:
        appendMaterial(std::unique_ptr<Material>(static_cast<Material*>(owned)));
        break;
    case NodeKind::renderData:
        insertRenderData(std::unique_ptr<RenderDataNode>(static_cast<RenderDataNode*>(owned)),
                         renderData_.last());
        break;
    default:
        appendObject(std::unique_ptr<Object>(static_cast<Object*>(owned)));
    }
}

} // namespace headless
