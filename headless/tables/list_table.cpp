// SPDX-License-Identifier: MIT
#include "headless/build/fingerprints.h"
#include "headless/model/handles.h"
#include "headless/tables/tables.h"

namespace headless {

namespace {

int32_t getType(const BaseList2D* node) {
    return fromHost(node)->type();
}

bool isInstanceOf(const BaseList2D* node, int32_t type) {
    return fromHost(node)->isInstanceOf(type);
}

String getName(const BaseList2D* node) {
    return String(fromHost(node)->name);
}

void setName(BaseList2D* node, const String& name) {
    fromHost(node)->name = name.GetUtf8();
}

int32_t getInfo(const BaseList2D* node) {
    return fromHost(node)->info;
}

void setInfo(BaseList2D* node, int32_t info) {
    fromHost(node)->info = info;
}

BaseContainer* getDataInstance(BaseList2D* node) {
    return &fromHost(node)->data;
}

bool getParameter(const BaseList2D* node, const DescID& id, GeData& data) {
    return fromHost(node)->parameter(id, data);
}

bool setParameter(BaseList2D* node, const DescID& id, const GeData& data) {
    return fromHost(node)->setParameter(id, data);
}

BaseDocument* getDocument(const BaseList2D* node) {
    return toHost(fromHost(node)->document());
}

NodeData* getNodeData(const BaseList2D* node) {
    return fromHost(node)->pluginData();
}

bool message(BaseList2D* node, int32_t type, void* data) {
    return fromHost(node)->message(type, data);
}

LayerObject* getLayerObject(const BaseList2D* node) {
    return toHost(fromHost(node)->layer());
}

void setLayerObject(BaseList2D* node, LayerObject* layer) {
    const bool isRoot = layer && !fromHost(layer)->parent() && fromHost(layer)->document();
    fromHost(node)->setLayer(isRoot ? nullptr : fromHost(layer));
}

BaseList2D* getClone(const BaseList2D* node) {
    return toHost(cloneNode(*fromHost(node)).release());
}

void removeFromList(BaseList2D* node) {
    static_cast<void>(removeNode(*fromHost(node)).release()); // The caller's from now on.
}

void freeNode(BaseList2D* node) {
    Node* const freed = fromHost(node);
    if (freed && freed->kind() == NodeKind::document) {
        delete freed;
    } else if (freed) {
        removeNode(*freed);
    }
}

LinkToken* acquireLinkToken(BaseList2D* node) {
    return fromHost(node)->acquireLinkToken();
}

uint32_t getDirty(const BaseList2D* node) {
    const uint64_t content = Fingerprints::ofNode(*fromHost(node));
    return static_cast<uint32_t>(content ^ (content >> 32));
}

} // namespace

const ListTable* listTable() {
    static constexpr ListTable table = {
        .GetType = getType,
        .IsInstanceOf = isInstanceOf,
        .GetName = getName,
        .SetName = setName,
        .GetInfo = getInfo,
        .SetInfo = setInfo,
        .GetDataInstance = getDataInstance,
        .GetParameter = getParameter,
        .SetParameter = setParameter,
        .GetDocument = getDocument,
        .GetNodeData = getNodeData,
        .Message = message,
        .GetLayerObject = getLayerObject,
        .SetLayerObject = setLayerObject,
        .GetClone = getClone,
        .Remove = removeFromList,
        .Free = freeNode,
        .AcquireLinkToken = acquireLinkToken,
        .GetDirty = getDirty,
    };
    return &table;
}

} // namespace headless
