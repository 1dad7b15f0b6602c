// SPDX-License-Identifier: MIT
#include "export/texture_tags.h"

#include "host/ids.h"
#include "host/object.h"

namespace {

TextureTag* findOnObject(const BaseObject* object, const String* selection) {
    for (BaseTag* tag = object->GetLastTag(); tag; tag = tag->GetPred()) {
        if (tag->GetType() != Ttexture) {
            continue;
        }
        const String restriction = tag->GetDataInstance()->GetString(TEXTURETAG_RESTRICTION);
        if (!restriction.Content() || (selection && restriction == *selection)) {
            return static_cast<TextureTag*>(tag);
        }
    }
    return nullptr;
}

} // namespace

TextureTag* findTextureTag(const BaseObject* object, const BaseTag* selectionTag) {
    const String name = selectionTag ? selectionTag->GetName() : String();
    while (object) {
        if (TextureTag* const tag = findOnObject(object, selectionTag ? &name : nullptr)) {
            return tag;
        }
        const BaseObject* const parent = object->GetUp();
        object = parent ? parent : object->GetCacheParent();
    }
    return nullptr;
}
