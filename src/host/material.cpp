// SPDX-License-Identifier: MIT
#include "host/material.h"

#include "host/ids.h"
#include "host/tables.h"

BaseShader* BaseShader::Alloc(int32_t type) {
    return HostTables()->material->AllocShader(type);
}

void BaseShader::Free(BaseShader*& shader) {
    HostTables()->list->Free(shader);
    shader = nullptr;
}

BaseShader* BaseShader::GetNext() const {
    return HostTables()->material->GetNextShader(this);
}

BaseShader* BaseShader::GetDown() const {
    return HostTables()->material->GetDownShader(this);
}

BaseMaterial* BaseMaterial::Alloc(int32_t type) {
    return HostTables()->material->Alloc(type);
}

void BaseMaterial::Free(BaseMaterial*& material) {
    HostTables()->list->Free(material);
    material = nullptr;
}

BaseMaterial* BaseMaterial::GetNext() const {
    return HostTables()->material->GetNext(this);
}

BaseMaterial* BaseMaterial::GetPred() const {
    return HostTables()->material->GetPred(this);
}

BaseShader* BaseMaterial::GetFirstShader() const {
    return HostTables()->material->GetFirstShader(this);
}

void BaseMaterial::InsertShader(BaseShader* shader) {
    HostTables()->material->InsertShader(this, shader);
}

void BaseShader::InsertUnder(BaseShader* shader) {
    HostTables()->material->InsertShaderUnder(this, shader);
}

BaseMaterial* BaseShader::GetMaterial() const {
    return HostTables()->material->GetMaterialOfShader(this);
}

int32_t BaseShader::InitRender(const InitRenderStruct& init) {
    return HostTables()->shading->InitRender(this, init);
}

void BaseShader::FreeRender() {
    HostTables()->shading->FreeRender(this);
}

Vector BaseShader::Sample(const ChannelData& channel) {
    return HostTables()->shading->Sample(this, channel);
}

bool BaseMaterial::GetChannelState(int32_t channel) const {
    return HostTables()->material->GetChannelState(this, channel);
}

bool BaseMaterial::InitGLImage(BaseDocument* document, BaseThread* thread, BaseBitmap* bitmap) {
    return HostTables()->material->InitGLImage(this, document, thread, bitmap);
}

void HandleShaderMessage(BaseList2D* node, int32_t id, int32_t type, void* data) {
    BaseList2D* const shader = node->GetDataInstance()->GetLink(id, node->GetDocument(), Xbase);
    if (shader) {
        shader->Message(type, data);
    }
}
