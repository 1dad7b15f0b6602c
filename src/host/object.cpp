// SPDX-License-Identifier: MIT
#include "host/object.h"

#include "host/tables.h"
#include "host/tag.h"

BaseObject* BaseObject::Alloc(int32_t type) {
    return HostTables()->object->Alloc(type);
}

void BaseObject::Free(BaseObject*& object) {
    HostTables()->list->Free(object);
    object = nullptr;
}

BaseObject* BaseObject::GetNext() const {
    return HostTables()->object->GetNext(this);
}

BaseObject* BaseObject::GetPred() const {
    return HostTables()->object->GetPred(this);
}

BaseObject* BaseObject::GetUp() const {
    return HostTables()->object->GetUp(this);
}

BaseObject* BaseObject::GetDown() const {
    return HostTables()->object->GetDown(this);
}

void BaseObject::InsertUnder(BaseObject* parent) {
    HostTables()->object->InsertUnder(this, parent);
}

BaseObject* BaseObject::GetCache(HierarchyHelp* help) const {
    return HostTables()->object->GetCache(this, help);
}

BaseObject* BaseObject::GetDeformCache() const {
    return HostTables()->object->GetDeformCache(this);
}

BaseObject* BaseObject::GetTopOrigin() const {
    return HostTables()->object->GetTopOrigin(this);
}

BaseObject* BaseObject::GetCacheParent() const {
    return HostTables()->object->GetCacheParent(this);
}

Matrix BaseObject::GetMg() const {
    return HostTables()->object->GetMg(this);
}

Matrix BaseObject::GetMl() const {
    return HostTables()->object->GetMl(this);
}

void BaseObject::SetMl(const Matrix& matrix) {
    HostTables()->object->SetMl(this, matrix);
}

void BaseObject::SetMg(const Matrix& matrix) {
    HostTables()->object->SetMg(this, matrix);
}

int32_t BaseObject::GetRenderMode() const {
    return HostTables()->object->GetRenderMode(this);
}

bool BaseObject::GetDeformMode() const {
    return HostTables()->object->GetDeformMode(this);
}

const LayerData* BaseObject::GetLayerData(const BaseDocument* document, bool raw) const {
    return HostTables()->object->GetLayerData(this, document, raw);
}

Vector BaseObject::GetMp() const {
    return HostTables()->object->GetMp(this);
}

Vector BaseObject::GetRad() const {
    return HostTables()->object->GetRad(this);
}

BaseTag* BaseObject::GetFirstTag() const {
    return HostTables()->object->GetFirstTag(this);
}

BaseTag* BaseObject::GetLastTag() const {
    return HostTables()->object->GetLastTag(this);
}

BaseTag* BaseObject::GetTag(int32_t type, int32_t nth) const {
    return HostTables()->object->GetTag(this, type, nth);
}

BaseTag* BaseObject::MakeTag(int32_t type) {
    BaseTag* const tag = BaseTag::Alloc(type);
    if (tag) {
        InsertTag(tag, GetLastTag());
    }
    return tag;
}

void BaseObject::InsertTag(BaseTag* tag, BaseTag* behind) {
    HostTables()->object->InsertTag(this, tag, behind);
}

PolygonObject* PolygonObject::Alloc(int32_t pointCount, int32_t polygonCount) {
    return HostTables()->object->AllocPolygonObject(pointCount, polygonCount);
}

int32_t PolygonObject::GetPointCount() const {
    return HostTables()->object->GetPointCount(this);
}

int32_t PolygonObject::GetPolygonCount() const {
    return HostTables()->object->GetPolygonCount(this);
}

const Vector* PolygonObject::GetPointR() const {
    return HostTables()->object->GetPoints(const_cast<PolygonObject*>(this));
}

const CPolygon* PolygonObject::GetPolygonR() const {
    return HostTables()->object->GetPolygons(const_cast<PolygonObject*>(this));
}

Vector* PolygonObject::GetPointW() {
    return HostTables()->object->GetPoints(this);
}

CPolygon* PolygonObject::GetPolygonW() {
    return HostTables()->object->GetPolygons(this);
}

Vector* PolygonObject::CreatePhongNormals() const {
    return HostTables()->object->CreatePhongNormals(this);
}

BaseObject* SendModelingCommand(int32_t command, BaseObject* object, BaseDocument* document) {
    return HostTables()->object->SendModelingCommand(command, object, document);
}

bool Hierarchy::Run(BaseDocument* document, bool splines, float levelOfDetail, int32_t flags, void* startData,
                    BaseThread* thread) {
    return HostTables()->object->RunHierarchy(this, document, splines, levelOfDetail, flags, startData,
                                              thread);
}
