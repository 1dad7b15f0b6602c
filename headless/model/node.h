// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "host/baselink.h"
#include "host/descid.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>

class NodeData;

namespace headless {

class Document;
class Layer;
struct Animation;

enum class NodeKind : uint8_t { object, tag, material, shader, videoPost, renderData, layer, document };

/// Which of the nodes that a node owns are meant.
enum class Owned : uint8_t {
    /// Those that make up the node: tags, shaders, video posts.
    parts,
    /// Parts, and children of an object or layer, and all lists of a document. Never caches.
    all
};

/// An element of a document with a type, a name, info flags and a container of parameters: what the plug-in
/// knows as BaseList2D. Nodes are made by node_types.h, held by std::unique_ptr while nobody owns them, and
/// owned by the list that they are inserted in. A link to a node goes null when the node dies.
class Node {
public:
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    virtual ~Node();

    NodeKind kind() const { return kind_; }
    int32_t type() const { return type_; }
    /// True for the node's own type and the base type of its kind (Obase, Tbase, ...).
    bool isInstanceOf(int32_t type) const;

    std::string name;
    /// Flags, NodeBits.
    int32_t info = 0;
    /// The parameters. A plug-in may hold a pointer to it and write to it at any time.
    BaseContainer data;
    /// Animation of this node; null when it has none.
    std::unique_ptr<Animation> animation;

    /// Null for a node outside any document. Nodes of caches belong to their generator's document.
    Document* document() const { return document_; }
    /// The plug-in's instance of a node of a registered type, else null.
    NodeData* pluginData() const { return pluginData_.get(); }

    Layer* layer() const;
    void setLayer(Layer* layer);

    /// False, and an empty value, when the container has no such number.
    bool parameter(const DescID& id, GeData& value) const;
    /// Asks the plug-in's instance first, which may change or refuse the value; false when it refused. On a
    /// camera the parameters that tell its lens in other words follow. The instance is told afterwards.
    bool setParameter(const DescID& id, const GeData& value);
    /// Sets what a document holds: no artist does it, so the plug-in isn't asked.
    void restoreParameter(const DescID& id, const GeData& value);
    /// Passes a message to the plug-in's instance. Without one it's true, and a material or shader of the
    /// host passes the message on to its shaders.
    bool message(int32_t type, void* data);

    /// The token that links share, with one more reference, which is the caller's.
    LinkToken* acquireLinkToken();
    /// Leads all links of `token` to this node, which has no token of its own yet: it takes the place of the
    /// dead node whose token it was.
    void adoptLinkToken(LinkToken& token);
    /// Null when no link to this node was ever made.
    LinkToken* linkToken() const { return token_.load(std::memory_order_acquire); }

    /// Takes over name, flags, parameters and all else that belongs to the node alone from `source`, a node
    /// of the same class and type. Lists that the node is in or owns stay as they are.
    virtual void assign(const Node& source);
    /// A new node of the same class and type, with nothing in it.
    virtual std::unique_ptr<Node> makeEmpty() const = 0;
    /// Calls `visit` for each node that this one owns directly, in order.
    virtual void visitOwned(Owned which, const std::function<void(Node&)>& visit) const;
    /// Takes over a node of a kind that this one can own, behind the others.
    virtual void appendOwned(std::unique_ptr<Node> node);
    /// Calls `visit` for each link of the node, in its container or elsewhere.
    virtual void visitLinks(const std::function<void(BaseLink&)>& visit);

    /// For the lists of the model, which keep it true for whole branches.
    virtual void setDocument(Document* document) { document_ = document; }
    /// For node_types.h: makes the plug-in's instance the node's.
    void setPluginData(std::unique_ptr<NodeData> data);

protected:
    Node(NodeKind kind, int32_t type);
    /// To be called first in the destructors of the classes: while the node is still whole, the plug-in's
    /// instance is freed and the links to the node go null.
    void retire();

private:
    const NodeKind kind_;
    const int32_t type_;
    Document* document_ = nullptr;
    std::unique_ptr<NodeData> pluginData_;
    std::atomic<LinkToken*> token_{nullptr};
    BaseLink layer_;
};

/// A copy of `node` with all below it (tags, children, shaders, ...) or with its parts alone, outside any
/// document and without caches. Links between copied nodes lead to the copies, inside containers too; others
/// stay.
std::unique_ptr<Node> cloneNode(const Node& node, Owned which = Owned::all);

template <class T>
std::unique_ptr<T> clone(const T& node, Owned which = Owned::all) {
    return std::unique_ptr<T>(static_cast<T*>(cloneNode(node, which).release()));
}

/// Takes `node` out of the list that holds it; the caller owns it then. A node that is in no list comes back
/// as it is. Null, and nothing happens, for what can't be taken out: the head of a cache, the root of the
/// layers, a document.
std::unique_ptr<Node> removeNode(Node& node);

} // namespace headless
