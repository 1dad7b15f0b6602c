// SPDX-License-Identifier: MIT
#pragma once

#include "host/baselist.h"
#include "host/baseselect.h"

class BaseDraw;
class BaseMaterial;
class BaseObject;

class BaseTag : public BaseList2D {
public:
    /// The caller owns the tag until it's inserted. Null for an unknown type.
    static BaseTag* Alloc(int32_t type);
    static void Free(BaseTag*& tag);

    BaseTag* GetNext() const;
    BaseTag* GetPred() const;
    /// The object that carries the tag.
    BaseObject* GetObject() const;
};

/// A material on an object, with its projection.
class TextureTag : public BaseTag {
public:
    BaseMaterial* GetMaterial() const;
    void SetMaterial(BaseMaterial* material);
    /// The texture's matrix in the space of the object that carries the tag: offset, and axes of half the
    /// texture's extents.
    Matrix GetMl() const;
    void SetMl(const Matrix& matrix);
};

/// Texture coordinates, one record of four corners per polygon.
class UVWTag : public BaseTag {
public:
    static UVWTag* Alloc(int32_t count);

    int32_t GetDataCount() const;
    /// The records as one array; it belongs to the tag.
    const UVWStruct* GetDataR() const;
    UVWStruct* GetDataW();
    UVWStruct Get(int32_t index) const { return GetDataR()[index]; }
    void Set(int32_t index, const UVWStruct& uvw) { GetDataW()[index] = uvw; }
    void Copy(int32_t index, const UVWTag* source, int32_t sourceIndex) {
        GetDataW()[index] = source->GetDataR()[sourceIndex];
    }
};

/// A named selection of polygons.
class SelectionTag : public BaseTag {
public:
    /// The live selection; it belongs to the tag.
    BaseSelect* GetBaseSelect() const;
};

/// Texture coordinates that the projection of `tag` gives `object`. The matrices are those of the object and
/// of the tag's owner in world space; frontal and camera projection look through `view`. The caller frees the
/// result; null when the projection can't be made.
UVWTag* GenerateUVW(BaseObject* object, const Matrix& objectMatrix, TextureTag* tag,
                    const Matrix& ownerMatrix, BaseDraw* view);
