// SPDX-License-Identifier: MIT
#include "host/basecontainer.h"

#include "host/ids.h"
#include "host/object.h"

#include <algorithm>
#include <utility>

const GeData* BaseContainer::FindData(int32_t id) const {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [id](const Entry& entry) { return entry.id == id; });
    return found == entries_.end() ? nullptr : &found->data;
}

GeData* BaseContainer::FindData(int32_t id) {
    return const_cast<GeData*>(std::as_const(*this).FindData(id));
}

int32_t BaseContainer::GetType(int32_t id) const {
    const GeData* const data = FindData(id);
    return data ? data->GetType() : DA_NIL;
}

GeData BaseContainer::GetData(int32_t id) const {
    const GeData* const data = FindData(id);
    return data ? *data : GeData();
}

bool BaseContainer::GetBool(int32_t id, bool preset) const {
    const GeData* const data = FindData(id);
    return data ? data->GetBool() : preset;
}

int32_t BaseContainer::GetLong(int32_t id, int32_t preset) const {
    const GeData* const data = FindData(id);
    return data ? data->GetLong() : preset;
}

float BaseContainer::GetReal(int32_t id, float preset) const {
    const GeData* const data = FindData(id);
    return data ? data->GetReal() : preset;
}

Vector BaseContainer::GetVector(int32_t id, const Vector& preset) const {
    const GeData* const data = FindData(id);
    return data ? data->GetVector() : preset;
}

Matrix BaseContainer::GetMatrix(int32_t id, const Matrix& preset) const {
    const GeData* const data = FindData(id);
    return data ? data->GetMatrix() : preset;
}

BaseTime BaseContainer::GetTime(int32_t id, const BaseTime& preset) const {
    const GeData* const data = FindData(id);
    return data ? data->GetTime() : preset;
}

String BaseContainer::GetString(int32_t id, const String& preset) const {
    const GeData* const data = FindData(id);
    return data ? data->GetString() : preset;
}

Filename BaseContainer::GetFilename(int32_t id, const Filename& preset) const {
    const GeData* const data = FindData(id);
    return data ? data->GetFilename() : preset;
}

void* BaseContainer::GetVoid(int32_t id) const {
    const GeData* const data = FindData(id);
    return data ? data->GetVoid() : nullptr;
}

BaseContainer BaseContainer::GetContainer(int32_t id) const {
    const GeData* const data = FindData(id);
    const BaseContainer* const inner = data ? data->GetContainer() : nullptr;
    return inner ? *inner : BaseContainer();
}

BaseContainer* BaseContainer::GetContainerInstance(int32_t id) {
    GeData* const data = FindData(id);
    return data ? data->GetContainer() : nullptr;
}

BaseList2D* BaseContainer::GetLink(int32_t id, const BaseDocument* document, int32_t type) const {
    const GeData* const data = FindData(id);
    return data ? data->GetLink(document, type) : nullptr;
}

BaseObject* BaseContainer::GetObjectLink(int32_t id, const BaseDocument* document) const {
    return static_cast<BaseObject*>(GetLink(id, document, Obase));
}

CustomDataType* BaseContainer::GetCustomDataType(int32_t id, int32_t type) const {
    const GeData* const data = FindData(id);
    return data ? data->GetCustomDataType(type) : nullptr;
}

void BaseContainer::SetData(int32_t id, GeData data) {
    if (GeData* const existing = FindData(id)) {
        *existing = std::move(data);
    } else {
        entries_.push_back({id, std::move(data)});
    }
}

void BaseContainer::InsDataAt(int32_t index, int32_t id, GeData data) {
    const auto place = std::clamp<ptrdiff_t>(index, 0, GetCount());
    entries_.insert(entries_.begin() + place, {id, std::move(data)});
}

bool BaseContainer::RemoveData(int32_t id) {
    const auto found =
        std::find_if(entries_.begin(), entries_.end(), [id](const Entry& entry) { return entry.id == id; });
    if (found == entries_.end()) {
        return false;
    }
    entries_.erase(found);
    return true;
}
