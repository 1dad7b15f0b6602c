// SPDX-License-Identifier: MIT
#include "headless/model/layer.h"

#include "host/ids.h"

#include <vector>

namespace headless {

namespace {

LayerData both(const LayerData& a, const LayerData& b) {
    return {a.view && b.view, a.render && b.render, a.manager && b.manager};
}

} // namespace

Layer::Layer() : Node(NodeKind::layer, ID_LAYER) {}

Layer::~Layer() {
    retire();
    destroyTree(children_, [](Layer& layer) -> Chain<Layer>& {
        layer.parent_ = nullptr;
        return layer.children_;
    });
}

void Layer::setOwnFlags(const LayerData& flags) {
    own_ = flags;
    updateFlags();
}

void Layer::updateFlags() {
    std::vector<Layer*> waiting{this};
    while (!waiting.empty()) {
        Layer& layer = *waiting.back();
        waiting.pop_back();
        layer.effective_ = layer.parent_ ? both(layer.own_, layer.parent_->effective_) : layer.own_;
        for (Layer* child = layer.children_.first(); child; child = child->next) {
            waiting.push_back(child);
        }
    }
}

Layer& Layer::insertChild(std::unique_ptr<Layer> layer, Layer* behind) {
    Layer& added = children_.insert(std::move(layer), behind);
    added.parent_ = this;
    added.updateFlags();
    added.setDocument(document());
    return added;
}

bool Layer::isWithin(const Layer& layer) const {
    const Layer* place = this;
    while (place && place != &layer) {
        place = place->parent_;
    }
    return place != nullptr;
}

void Layer::assign(const Node& source) {
    Node::assign(source);
    setOwnFlags(static_cast<const Layer&>(source).own_);
}

std::unique_ptr<Node> Layer::makeEmpty() const {
    return std::make_unique<Layer>();
}

void Layer::visitOwned(Owned which, const std::function<void(Node&)>& visit) const {
    if (which == Owned::all) {
        for (Layer* child = children_.first(); child; child = child->next) {
            visit(*child);
        }
    }
}

void Layer::appendOwned(std::unique_ptr<Node> node) {
    insertChild(std::unique_ptr<Layer>(static_cast<Layer*>(node.release())), children_.last());
}

void Layer::setDocument(Document* document) {
    std::vector<Layer*> waiting{this};
    while (!waiting.empty()) {
        Layer& layer = *waiting.back();
        waiting.pop_back();
        layer.Node::setDocument(document);
        for (Layer* child = layer.children_.first(); child; child = child->next) {
            waiting.push_back(child);
        }
    }
}

} // namespace headless
