// SPDX-License-Identifier: MIT
#pragma once

#include "host/baselist.h"

/// A layer of a document. A document's layers hang below a root layer of their own.
class LayerObject : public BaseList2D {
public:
    static LayerObject* Alloc();

    LayerObject* GetDown() const;
    LayerObject* GetNext() const;
    /// The host takes the layer over, as the first below `parent`.
    void InsertUnder(LayerObject* parent);
};
