// SPDX-License-Identifier: MIT
#include "host/tag.h"

#include "host/tables.h"

BaseTag* BaseTag::Alloc(int32_t type) {
    return HostTables()->tag->Alloc(type);
}

void BaseTag::Free(BaseTag*& tag) {
    HostTables()->list->Free(tag);
    tag = nullptr;
}

BaseTag* BaseTag::GetNext() const {
    return HostTables()->tag->GetNext(this);
}

BaseTag* BaseTag::GetPred() const {
    return HostTables()->tag->GetPred(this);
}

BaseObject* BaseTag::GetObject() const {
    return HostTables()->tag->GetObject(this);
}

BaseMaterial* TextureTag::GetMaterial() const {
    return HostTables()->tag->GetMaterial(this);
}

void TextureTag::SetMaterial(BaseMaterial* material) {
    HostTables()->tag->SetMaterial(this, material);
}

Matrix TextureTag::GetMl() const {
    return HostTables()->tag->GetTextureMatrix(this);
}

void TextureTag::SetMl(const Matrix& matrix) {
    HostTables()->tag->SetTextureMatrix(this, matrix);
}

UVWTag* UVWTag::Alloc(int32_t count) {
    return HostTables()->tag->AllocUVW(count);
}

int32_t UVWTag::GetDataCount() const {
    return HostTables()->tag->GetUVWCount(this);
}

const UVWStruct* UVWTag::GetDataR() const {
    return HostTables()->tag->GetUVWData(const_cast<UVWTag*>(this));
}

UVWStruct* UVWTag::GetDataW() {
    return HostTables()->tag->GetUVWData(this);
}

BaseSelect* SelectionTag::GetBaseSelect() const {
    return HostTables()->tag->GetBaseSelect(this);
}

UVWTag* GenerateUVW(BaseObject* object, const Matrix& objectMatrix, TextureTag* tag,
                    const Matrix& ownerMatrix, BaseDraw* view) {
    return HostTables()->tag->GenerateUVW(object, objectMatrix, tag, ownerMatrix, view);
}
