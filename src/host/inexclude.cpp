// SPDX-License-Identifier: MIT
#include "host/inexclude.h"

BaseList2D* InExcludeData::ObjectFromIndex(const BaseDocument* document, int32_t index) const {
    if (index < 0 || index >= GetObjectCount()) {
        return nullptr;
    }
    return entries_[static_cast<size_t>(index)].link.GetLink(document);
}

int32_t InExcludeData::GetFlags(int32_t index) const {
    return index >= 0 && index < GetObjectCount() ? entries_[static_cast<size_t>(index)].flags : 0;
}

bool InExcludeData::InsertObject(BaseList2D* object, int32_t flags) {
    if (!object) {
        return false;
    }
    entries_.push_back({BaseLink(object), flags});
    return true;
}

AtomArray* InExcludeData::GetObjectsIn(const BaseDocument* document) const {
    AtomArray* const objects = AtomArray::Alloc();
    for (const Entry& entry : entries_) {
        if (BaseList2D* const object = entry.link.GetLink(document)) {
            objects->Append(object);
        }
    }
    return objects;
}

bool InExcludeData::CheckObjectInList(const BaseList2D* object, const BaseDocument* document) const {
    for (const Entry& entry : entries_) {
        if (object && entry.link.GetLink(document) == object) {
            return true;
        }
    }
    return false;
}
