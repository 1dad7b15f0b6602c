// SPDX-License-Identifier: MIT
#include "headless/model/node.h"

#include "headless/model/camera_lens.h"
#include "headless/model/handles.h"
#include "headless/model/track.h"
#include "host/inexclude.h"
#include "host/plugin_data.h"

#include <vector>

namespace headless {

namespace {

int32_t baseType(NodeKind kind) {
    switch (kind) {
    case NodeKind::object:
        return Obase;
    case NodeKind::tag:
        return Tbase;
    case NodeKind::material:
        return Mbase;
    case NodeKind::shader:
        return Xbase;
    case NodeKind::videoPost:
        return VPbase;
    default:
        return 0;
    }
}

void release(LinkToken& token) {
    if (token.references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        delete &token;
    }
}

void visitLinksOf(BaseContainer& container, const std::function<void(BaseLink&)>& visit);

void visitLinksOf(GeData& value, const std::function<void(BaseLink&)>& visit) {
    if (const BaseLink* const link = value.GetBaseLink()) {
        visit(const_cast<BaseLink&>(*link));
    } else if (BaseContainer* const inner = value.GetContainer()) {
        visitLinksOf(*inner, visit);
    } else if (CustomDataType* const custom = value.GetCustomDataType(CUSTOMDATATYPE_INEXCLUDE_LIST)) {
        auto& list = *static_cast<InExcludeData*>(custom);
        for (int32_t i = 0; i < list.GetObjectCount(); ++i) {
            visit(list.LinkFromIndex(i));
        }
    }
}

void visitLinksOf(BaseContainer& container, const std::function<void(BaseLink&)>& visit) {
    for (int32_t i = 0; i < container.GetCount(); ++i) {
        visitLinksOf(const_cast<GeData&>(container.GetIndexData(i)), visit);
    }
}

/// Gives a message to the shaders that a node holds; those of a plug-in pass it on themselves.
void passOn(const Node& top, int32_t type, void* messageData) {
    std::vector<const Node*> nodes{&top};
    for (size_t i = 0; i < nodes.size(); ++i) {
        nodes[i]->visitOwned(Owned::parts, [&](Node& shader) {
            if (shader.pluginData()) {
                shader.message(type, messageData);
            } else {
                nodes.push_back(&shader);
            }
        });
    }
}

} // namespace

Node::Node(NodeKind kind, int32_t type) : kind_(kind), type_(type) {}

Node::~Node() {
    retire();
}

void Node::retire() {
    if (pluginData_) {
        pluginData_->Free(toHost(this));
        pluginData_.reset();
    }
    if (LinkToken* const token = token_.exchange(nullptr)) {
        token->target = nullptr;
        release(*token);
    }
}

bool Node::isInstanceOf(int32_t type) const {
    return type == type_ || (type != 0 && type == baseType(kind_));
}

Layer* Node::layer() const {
    return static_cast<Layer*>(fromHost(layer_.GetLink()));
}

void Node::setLayer(Layer* layer) {
    layer_.SetLink(toHost(layer));
}

bool Node::parameter(const DescID& id, GeData& value) const {
    const GeData* const found = data.FindData(id[0]);
    value = found ? *found : GeData();
    return found != nullptr;
}

bool Node::setParameter(const DescID& id, const GeData& value) {
    GeData accepted = value;
    if (pluginData_ && !pluginData_->SetDParameter(toHost(this), id, accepted)) {
        return false;
    }
    restoreParameter(id, accepted);
    message(MSG_DESCRIPTION_POSTSETPARAMETER, nullptr);
    return true;
}

void Node::restoreParameter(const DescID& id, const GeData& value) {
    data.SetData(id[0], value);
    if (type_ == Ocamera) {
        settleLens(data, id[0]);
    }
}

bool Node::message(int32_t type, void* messageData) {
    if (pluginData_) {
        return pluginData_->Message(toHost(this), type, messageData);
    }
    if (kind_ == NodeKind::material || kind_ == NodeKind::shader) {
        passOn(*this, type, messageData);
    }
    return true;
}

LinkToken* Node::acquireLinkToken() {
    LinkToken* token = linkToken();
    if (!token) {
        // Two threads may set the first link to a node at once.
        auto fresh = std::make_unique<LinkToken>();
        fresh->target = toHost(this);
        if (token_.compare_exchange_strong(token, fresh.get(), std::memory_order_acq_rel)) {
            token = fresh.release();
        }
    }
    token->references.fetch_add(1, std::memory_order_relaxed);
    return token;
}

void Node::adoptLinkToken(LinkToken& token) {
    token.references.fetch_add(1, std::memory_order_relaxed);
    token.target = toHost(this);
    token_.store(&token, std::memory_order_release);
}

void Node::assign(const Node& source) {
    name = source.name;
    info = source.info & ~BIT_CONTROLOBJECT;
    data = source.data;
    animation = source.animation ? std::make_unique<Animation>(*source.animation) : nullptr;
    layer_ = source.layer_;
    if (pluginData_ && source.pluginData_) {
        source.pluginData_->CopyTo(pluginData_.get(), toHost(&source), toHost(this));
    }
}

void Node::visitOwned(Owned, const std::function<void(Node&)>&) const {}

void Node::appendOwned(std::unique_ptr<Node>) {}

void Node::visitLinks(const std::function<void(BaseLink&)>& visit) {
    visit(layer_);
    visitLinksOf(data, visit);
    if (animation) {
        for (Track& track : animation->tracks) {
            for (Key& key : track.keys) {
                visitLinksOf(key.value, visit);
            }
        }
    }
}

void Node::setPluginData(std::unique_ptr<NodeData> pluginData) {
    pluginData_ = std::move(pluginData);
}

} // namespace headless
