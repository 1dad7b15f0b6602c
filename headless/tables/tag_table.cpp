// SPDX-License-Identifier: MIT
#include "headless/build/surface_data.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/tables/tables.h"

namespace headless {

namespace {

BaseTag* alloc(int32_t type) {
    return toHost(createTag(type).release());
}

BaseTag* getNext(const BaseTag* tag) {
    return toHost(fromHost(tag)->next);
}

BaseTag* getPred(const BaseTag* tag) {
    return toHost(fromHost(tag)->pred);
}

BaseObject* getObject(const BaseTag* tag) {
    return toHost(fromHost(tag)->object());
}

BaseMaterial* getMaterial(const ::TextureTag* tag) {
    return toHost(fromHost(tag)->material());
}

void setMaterial(::TextureTag* tag, BaseMaterial* material) {
    fromHost(tag)->setMaterial(fromHost(material));
}

Matrix getTextureMatrix(const ::TextureTag* tag) {
    return fromHost(tag)->matrix;
}

void setTextureMatrix(::TextureTag* tag, const Matrix& matrix) {
    fromHost(tag)->matrix = matrix;
}

::UVWTag* allocUVW(int32_t count) {
    return count < 0 ? nullptr : toHost(std::make_unique<UVWTagNode>(static_cast<size_t>(count)).release());
}

int32_t getUVWCount(const ::UVWTag* tag) {
    return static_cast<int32_t>(fromHost(tag)->records.size());
}

UVWStruct* getUVWData(::UVWTag* tag) {
    return fromHost(tag)->records.data();
}

BaseSelect* getBaseSelect(const ::SelectionTag* tag) {
    return &fromHost(tag)->selection;
}

::UVWTag* generate(BaseObject* object, const Matrix& objectMatrix, ::TextureTag* tag,
                   const Matrix& ownerMatrix, BaseDraw* view) {
    const PolygonNode* const mesh = asPolygons(fromHost(object));
    if (!mesh || !tag) {
        return nullptr;
    }
    return toHost(generateUVW(*mesh, objectMatrix, *fromHost(tag), ownerMatrix, fromHost(view)).release());
}

} // namespace

const TagTable* tagTable() {
    static constexpr TagTable table = {
        .Alloc = alloc,
        .GetNext = getNext,
        .GetPred = getPred,
        .GetObject = getObject,
        .GetMaterial = getMaterial,
        .SetMaterial = setMaterial,
        .GetTextureMatrix = getTextureMatrix,
        .SetTextureMatrix = setTextureMatrix,
        .AllocUVW = allocUVW,
        .GetUVWCount = getUVWCount,
        .GetUVWData = getUVWData,
        .GetBaseSelect = getBaseSelect,
        .GenerateUVW = generate,
    };
    return &table;
}

} // namespace headless
