// SPDX-License-Identifier: MIT
#include "materials/bake_target.h"

#include "host/atomarray.h"
#include "host/document.h"
#include "host/ids.h"
#include "host/material.h"
#include "host/object.h"
#include "host/tag.h"
#include "shared/plugin_ids.h"

namespace {

/// Place of a texture tag among the texture tags of its object, from the left.
int32_t indexOfTag(const TextureTag* tag) {
    int32_t index = 0;
    for (const BaseTag* other = tag->GetPred(); other; other = other->GetPred()) {
        index += other->GetType() == Ttexture ? 1 : 0;
    }
    return index;
}

UVWTag* generateUVW(BaseDocument* document, BaseObject* object, TextureTag* tag) {
    const Matrix place = object->GetMg();
    UVWTag* const made = GenerateUVW(object, place, tag, place, document->GetActiveBaseDraw());
    if (!made) {
        return nullptr;
    }
    object->InsertTag(made, object->GetLastTag());
    document->AddUndo(UNDOTYPE_NEW, made);
    document->AddUndo(UNDOTYPE_CHANGE, tag);
    tag->GetDataInstance()->SetLong(TEXTURETAG_PROJECTION, P_UVW);
    tag->Message(MSG_UPDATE);
    return made;
}

} // namespace

TextureTag* findBakeTag(const BaseDocument* document) {
    AtomArray selection;
    if (document) {
        document->GetSelection(selection);
    }
    BaseList2D* const only = selection.GetCount() == 1 ? selection.GetIndex(0) : nullptr;
    if (!only || only->GetType() != Ttexture) {
        return nullptr;
    }
    auto* const tag = static_cast<TextureTag*>(only);
    const BaseMaterial* const material = tag->GetMaterial();
    const BaseObject* const object = tag->GetObject();
    const bool isBakeable =
        material && material->GetType() == PLUGINID_MATERIAL && object && object->GetType() == Opolygon;
    return isBakeable ? tag : nullptr;
}

UVWTag* prepareBakeUVW(BaseDocument* document, TextureTag* tag) {
    BaseObject* const object = tag->GetObject();
    if (tag->GetDataInstance()->GetLong(TEXTURETAG_PROJECTION) == P_UVW) {
        BaseTag* const own = object->GetTag(Tuvw, indexOfTag(tag));
        if (BaseTag* const found = own ? own : object->GetTag(Tuvw)) {
            return static_cast<UVWTag*>(found);
        }
    }
    return generateUVW(document, object, tag);
}

BakeTarget makeBakeTarget(BaseDocument* document, const TextureTag* tag) {
    BakeTarget target;
    BaseObject* const object = tag->GetObject();
    target.material = static_cast<BaseMaterial*>(tag->GetMaterial()->GetClone());
    if (!target.material) {
        return target;
    }
    document->InsertMaterial(target.material);
    document->AddUndo(UNDOTYPE_NEW, target.material);
    target.object = static_cast<BaseObject*>(object->GetClone());
    if (!target.object) {
        return target;
    }
    document->InsertObject(target.object, object->GetUp(), object);
    document->AddUndo(UNDOTYPE_NEW, target.object);
    target.tag = static_cast<TextureTag*>(target.object->GetTag(Ttexture, indexOfTag(tag)));
    if (target.tag) {
        // The selection stays with the artist's own tag.
        target.tag->DelBit(BIT_ACTIVE);
        target.tag->SetMaterial(target.material);
        target.uvw = prepareBakeUVW(document, target.tag);
    }
    return target;
}
