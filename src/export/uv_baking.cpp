// SPDX-License-Identifier: MIT
#include "export/uv_baking.h"

#include "host/document.h"
#include "host/ids.h"
#include "host/material.h"

#include <algorithm>

namespace {

struct MaterialDeleter {
    void operator()(BaseMaterial* material) const { BaseMaterial::Free(material); }
};

/// How a texture tag repeats its texture.
UvSource tiling(const TextureTag* tag) {
    const BaseContainer* const data = tag->GetDataInstance();
    UvSource source;
    source.scaleU = 1.0f / data->GetReal(TEXTURETAG_LENGTHX, 1.0f);
    source.scaleV = 1.0f / data->GetReal(TEXTURETAG_LENGTHY, 1.0f);
    source.shiftU = data->GetReal(TEXTURETAG_OFFSETX) * source.scaleU;
    source.shiftV = data->GetReal(TEXTURETAG_OFFSETY) * source.scaleV;
    return source;
}

bool covers(const UVWTag* tag, int32_t polygonCount) {
    return tag && tag->GetDataCount() >= polygonCount;
}

UVWStruct tiled(const UVWStruct& uvw, const UvSource& source) {
    const auto corner = [&source](const Vector& v) {
        return Vector(v.x * source.scaleU - source.shiftU, v.y * source.scaleV - source.shiftV, v.z);
    };
    return {corner(uvw.a), corner(uvw.b), corner(uvw.c), corner(uvw.d)};
}

} // namespace

BakedUVs::OwnedUVW BakedUVs::generate(PolygonObject* object, const TextureTag* tag, BaseDocument* document) {
    // The projection is asked of a copy with a plain material: a plug-in's own material may not take part in
    // it.
    const std::unique_ptr<TextureTag, TagDeleter> copy(static_cast<TextureTag*>(tag->GetClone()));
    const std::unique_ptr<BaseMaterial, MaterialDeleter> plain(BaseMaterial::Alloc(Mmaterial));
    const BaseObject* const owner = tag->GetObject();
    if (!copy || !plain || !owner) {
        return nullptr;
    }
    copy->SetMaterial(plain.get());
    OwnedUVW generated(
        GenerateUVW(object, object->GetMg(), copy.get(), owner->GetMg(), document->GetActiveBaseDraw()));
    return generated && covers(generated.get(), object->GetPolygonCount()) ? std::move(generated) : nullptr;
}

void BakedUVs::bakeSlot(const MaterialSlot& slot, const UVWTag* generated, const UVWTag* own,
                        int32_t polygonCount) {
    const UvSource source = tiling(slot.tag);
    UVWStruct* const target = tag_->GetDataW();
    const UVWStruct* const from = generated ? generated->GetDataR() : own ? own->GetDataR() : target;
    int32_t first = 0;
    int32_t last = 0;
    for (int32_t n = 0; slot.polygons.GetRange(n, &first, &last); ++n) {
        for (int32_t i = first; i <= std::min(last, polygonCount - 1); ++i) {
            target[i] = tiled(from[i], source);
        }
    }
}

bool BakedUVs::bake(PolygonObject* object, const std::vector<MaterialSlot>& slots, BaseDocument* document) {
    const int32_t polygonCount = object->GetPolygonCount();
    const auto* own = static_cast<const UVWTag*>(object->GetTag(Tuvw));
    if (!covers(own, polygonCount)) {
        own = nullptr;
    }
    if (slots.size() == 1) {
        // One tiling for all: it is applied while the corners are read, without a copy of the records.
        if (slots[0].tag) {
            source_ = tiling(slots[0].tag);
            tag_ = generate(object, slots[0].tag, document);
            source_.records = tag_ ? tag_->GetDataR() : own ? own->GetDataR() : nullptr;
        }
        return true;
    }
    tag_.reset(UVWTag::Alloc(polygonCount));
    if (!tag_) {
        return false;
    }
    for (const MaterialSlot& slot : slots) {
        if (slot.tag) {
            const OwnedUVW generated = generate(object, slot.tag, document);
            bakeSlot(slot, generated.get(), own, polygonCount);
        }
    }
    source_.records = tag_->GetDataR();
    return true;
}
