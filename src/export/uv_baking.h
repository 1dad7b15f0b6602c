// SPDX-License-Identifier: MIT
#pragma once

#include "export/material_slots.h"
#include "export/mesh_arrays.h"
#include "host/object.h"
#include "host/tag.h"

#include <memory>

struct TagDeleter {
    void operator()(BaseTag* tag) const { BaseTag::Free(tag); }
};

/// Texture coordinates of all polygons with the tiling of each slot's texture tag.
class BakedUVs {
public:
    /// Asks the host for the projection of each slot's texture tag; where that gives nothing the object's own
    /// UVW tag serves. False when there is no memory.
    bool bake(PolygonObject* object, const std::vector<MaterialSlot>& slots, BaseDocument* document);

    /// Valid while this object and the polygon object live.
    const UvSource& source() const { return source_; }

private:
    using OwnedUVW = std::unique_ptr<UVWTag, TagDeleter>;

    static OwnedUVW generate(PolygonObject* object, const TextureTag* tag, BaseDocument* document);
    void bakeSlot(const MaterialSlot& slot, const UVWTag* generated, const UVWTag* own, int32_t polygonCount);

    OwnedUVW tag_;
    UvSource source_;
};
