// SPDX-License-Identifier: MIT
#include "host/baselist.h"

#include "host/tables.h"

int32_t BaseList2D::GetType() const {
    return HostTables()->list->GetType(this);
}

bool BaseList2D::IsInstanceOf(int32_t type) const {
    return HostTables()->list->IsInstanceOf(this, type);
}

String BaseList2D::GetName() const {
    return HostTables()->list->GetName(this);
}

void BaseList2D::SetName(const String& name) {
    HostTables()->list->SetName(this, name);
}

int32_t BaseList2D::GetInfo() const {
    return HostTables()->list->GetInfo(this);
}

void BaseList2D::SetBit(int32_t mask) {
    HostTables()->list->SetInfo(this, GetInfo() | mask);
}

void BaseList2D::DelBit(int32_t mask) {
    HostTables()->list->SetInfo(this, GetInfo() & ~mask);
}

BaseContainer* BaseList2D::GetDataInstance() {
    return HostTables()->list->GetDataInstance(this);
}

const BaseContainer* BaseList2D::GetDataInstance() const {
    return HostTables()->list->GetDataInstance(const_cast<BaseList2D*>(this));
}

bool BaseList2D::GetParameter(const DescID& id, GeData& data) const {
    return HostTables()->list->GetParameter(this, id, data);
}

bool BaseList2D::SetParameter(const DescID& id, const GeData& data) {
    return HostTables()->list->SetParameter(this, id, data);
}

BaseDocument* BaseList2D::GetDocument() const {
    return HostTables()->list->GetDocument(this);
}

NodeData* BaseList2D::GetNodeData() const {
    return HostTables()->list->GetNodeData(this);
}

bool BaseList2D::Message(int32_t type, void* data) {
    return HostTables()->list->Message(this, type, data);
}

uint32_t BaseList2D::GetDirty() const {
    return HostTables()->list->GetDirty(this);
}

BaseList2D* BaseList2D::GetClone() const {
    return HostTables()->list->GetClone(this);
}

void BaseList2D::Remove() {
    HostTables()->list->Remove(this);
}

LayerObject* BaseList2D::GetLayerObject() const {
    return HostTables()->list->GetLayerObject(this);
}

void BaseList2D::SetLayerObject(LayerObject* layer) {
    HostTables()->list->SetLayerObject(this, layer);
}
