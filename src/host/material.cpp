// SPDX-License-Identifier: MIT
#include "host/material.h"

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
