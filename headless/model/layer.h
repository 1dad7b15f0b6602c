// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/chain.h"
#include "headless/model/node.h"
#include "host/object.h"

namespace headless {

/// A layer of a document. Layers form a tree: a layer's flags hold for those below it too.
class Layer : public Node {
public:
    Layer();
    ~Layer() override;

    /// The layer's own flags.
    const LayerData& ownFlags() const { return own_; }
    void setOwnFlags(const LayerData& flags);
    /// The layer's flags together with those of the layers above it.
    const LayerData& flags() const { return effective_; }

    Layer* parent() const { return parent_; }
    const Chain<Layer>& children() const { return children_; }
    /// Takes over `layer` as a child behind `behind`, or first when that is null.
    Layer& insertChild(std::unique_ptr<Layer> layer, Layer* behind);

    /// True for `layer` itself and all below it.
    bool isWithin(const Layer& layer) const;

    Layer* next = nullptr;
    Layer* pred = nullptr;

    void assign(const Node& source) override;
    std::unique_ptr<Node> makeEmpty() const override;
    void visitOwned(Owned which, const std::function<void(Node&)>& visit) const override;
    void appendOwned(std::unique_ptr<Node> node) override;
    void setDocument(Document* document) override;

private:
    friend std::unique_ptr<Node> removeNode(Node&);
    void updateFlags();

    LayerData own_;
    LayerData effective_;
    Layer* parent_ = nullptr;
    Chain<Layer> children_;
};

} // namespace headless
