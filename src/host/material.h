// SPDX-License-Identifier: MIT
#pragma once

#include "host/baselist.h"

class BaseShader : public BaseList2D {
public:
    static BaseShader* Alloc(int32_t type);
    static void Free(BaseShader*& shader);

    BaseShader* GetNext() const;
    BaseShader* GetDown() const;
};

class BaseMaterial : public BaseList2D {
public:
    /// The caller owns the material until it's inserted. Null for an unknown type.
    static BaseMaterial* Alloc(int32_t type);
    static void Free(BaseMaterial*& material);

    BaseMaterial* GetNext() const;
    BaseMaterial* GetPred() const;
    BaseShader* GetFirstShader() const;
    void InsertShader(BaseShader* shader);
};
