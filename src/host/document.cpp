// SPDX-License-Identifier: MIT
#include "host/document.h"

#include "host/tables.h"

BaseVideoPost* BaseVideoPost::Alloc(int32_t type) {
    return HostTables()->document->AllocVideoPost(type);
}

void BaseVideoPost::Free(BaseVideoPost*& videoPost) {
    HostTables()->list->Free(videoPost);
    videoPost = nullptr;
}

BaseVideoPost* BaseVideoPost::GetNext() const {
    return HostTables()->document->GetNextVideoPost(this);
}

BaseVideoPost* RenderData::GetFirstVideoPost() const {
    return HostTables()->document->GetFirstVideoPost(this);
}

void RenderData::InsertVideoPost(BaseVideoPost* videoPost, BaseVideoPost* behind) {
    HostTables()->document->InsertVideoPost(this, videoPost, behind);
}

BaseDocument* BaseDocument::Alloc() {
    return HostTables()->document->Alloc();
}

void BaseDocument::Free(BaseDocument*& document) {
    HostTables()->list->Free(document);
    document = nullptr;
}

BaseObject* BaseDocument::GetFirstObject() const {
    return HostTables()->document->GetFirstObject(this);
}

BaseMaterial* BaseDocument::GetFirstMaterial() const {
    return HostTables()->document->GetFirstMaterial(this);
}

RenderData* BaseDocument::GetActiveRenderData() const {
    return HostTables()->document->GetActiveRenderData(this);
}

BaseDraw* BaseDocument::GetActiveBaseDraw() const {
    return HostTables()->document->GetActiveBaseDraw(this);
}

void BaseDocument::InsertObject(BaseObject* object, BaseObject* parent, BaseObject* behind) {
    HostTables()->document->InsertObject(this, object, parent, behind);
}

void BaseDocument::InsertMaterial(BaseMaterial* material, BaseMaterial* behind) {
    HostTables()->document->InsertMaterial(this, material, behind);
}

int32_t BaseDocument::GetFps() const {
    return HostTables()->document->GetFps(this);
}

void BaseDocument::SetFps(int32_t fps) {
    HostTables()->document->SetFps(this, fps);
}

BaseTime BaseDocument::GetTime() const {
    return HostTables()->document->GetTime(this);
}

void BaseDocument::SetTime(const BaseTime& time) {
    HostTables()->document->SetTime(this, time);
}

BaseTime BaseDocument::GetMinTime() const {
    return HostTables()->document->GetMinTime(this);
}

BaseTime BaseDocument::GetMaxTime() const {
    return HostTables()->document->GetMaxTime(this);
}

void BaseDocument::AnimateObject(BaseObject* object, const BaseTime& time, int32_t flags) {
    HostTables()->document->AnimateObject(this, object, time, flags);
}

void BaseDocument::AnimateDocument(BaseThread* thread, bool expressions) {
    HostTables()->document->AnimateDocument(this, thread, expressions);
}

Filename BaseDocument::GetDocumentPath() const {
    return HostTables()->document->GetDocumentPath(this);
}

Filename BaseDocument::GetDocumentName() const {
    return HostTables()->document->GetDocumentName(this);
}

void BaseDocument::StartUndo() {
    HostTables()->document->StartUndo(this);
}

void BaseDocument::AddUndo(int32_t type, BaseList2D* node) {
    HostTables()->document->AddUndo(this, type, node);
}

void BaseDocument::EndUndo() {
    HostTables()->document->EndUndo(this);
}

bool BaseDocument::DoUndo() {
    return HostTables()->document->DoUndo(this);
}

BaseDocument* GetActiveDocument() {
    return HostTables()->document->GetActiveDocument();
}

RenderData* RenderData::Alloc() {
    return HostTables()->document->AllocRenderData();
}

void BaseDocument::InsertRenderData(RenderData* renderData) {
    HostTables()->document->InsertRenderData(this, renderData);
}

LayerObject* BaseDocument::GetLayerObjectRoot() const {
    return HostTables()->document->GetLayerObjectRoot(this);
}

void BaseDocument::GetActiveMaterials(AtomArray& materials) const {
    HostTables()->document->GetActiveMaterials(this, materials);
}

void BaseDocument::GetSelection(AtomArray& nodes) const {
    HostTables()->document->GetSelection(this, nodes);
}

void BaseDocument::SetDocumentPath(const Filename& folder) {
    HostTables()->document->SetDocumentPath(this, folder);
}

void BaseDocument::SetDocumentName(const Filename& name) {
    HostTables()->document->SetDocumentName(this, name);
}

void BaseDocument::SetChanged() {
    HostTables()->document->SetChanged(this);
}
