// SPDX-License-Identifier: MIT
#include "host/layer.h"

#include "host/tables.h"

LayerObject* LayerObject::Alloc() {
    return HostTables()->document->AllocLayer();
}

LayerObject* LayerObject::GetDown() const {
    return HostTables()->document->GetDownLayer(this);
}

LayerObject* LayerObject::GetNext() const {
    return HostTables()->document->GetNextLayer(this);
}

void LayerObject::InsertUnder(LayerObject* parent) {
    HostTables()->document->InsertLayerUnder(this, parent);
}
