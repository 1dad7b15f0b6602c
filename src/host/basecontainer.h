// SPDX-License-Identifier: MIT
#pragma once

#include "host/gedata.h"

#include <vector>

/// Typed values by number, in the order of their first setting. Reading a missing number gives the default.
class BaseContainer {
public:
    BaseContainer() = default;
    explicit BaseContainer(int32_t id) : id_(id) {}

    int32_t GetId() const { return id_; }
    void SetId(int32_t id) { id_ = id; }
    int32_t GetCount() const { return static_cast<int32_t>(entries_.size()); }
    int32_t GetIndexId(int32_t index) const { return entries_[static_cast<size_t>(index)].id; }
    const GeData& GetIndexData(int32_t index) const { return entries_[static_cast<size_t>(index)].data; }
    GeData& GetIndexData(int32_t index) { return entries_[static_cast<size_t>(index)].data; }

    /// DA_NIL for a missing number.
    int32_t GetType(int32_t id) const;
    /// Null for a missing number. Valid until the container changes.
    const GeData* FindData(int32_t id) const;
    GeData* FindData(int32_t id);
    GeData GetData(int32_t id) const;

    bool GetBool(int32_t id, bool preset = false) const;
    int32_t GetLong(int32_t id, int32_t preset = 0) const;
    float GetReal(int32_t id, float preset = 0.0f) const;
    Vector GetVector(int32_t id, const Vector& preset = Vector()) const;
    Matrix GetMatrix(int32_t id, const Matrix& preset = Matrix()) const;
    BaseTime GetTime(int32_t id, const BaseTime& preset = BaseTime()) const;
    String GetString(int32_t id, const String& preset = String()) const;
    Filename GetFilename(int32_t id, const Filename& preset = Filename()) const;
    void* GetVoid(int32_t id) const;
    BaseContainer GetContainer(int32_t id) const;
    BaseContainer* GetContainerInstance(int32_t id);
    BaseList2D* GetLink(int32_t id, const BaseDocument* document, int32_t type = 0) const;
    class BaseObject* GetObjectLink(int32_t id, const BaseDocument* document) const;
    CustomDataType* GetCustomDataType(int32_t id, int32_t type) const;

    void SetData(int32_t id, GeData data);
    void SetBool(int32_t id, bool value) { SetData(id, GeData(value)); }
    void SetLong(int32_t id, int32_t value) { SetData(id, GeData(value)); }
    void SetReal(int32_t id, float value) { SetData(id, GeData(value)); }
    void SetVector(int32_t id, const Vector& value) { SetData(id, GeData(value)); }
    void SetMatrix(int32_t id, const Matrix& value) { SetData(id, GeData(value)); }
    void SetTime(int32_t id, const BaseTime& value) { SetData(id, GeData(value)); }
    void SetString(int32_t id, const String& value) { SetData(id, GeData(value)); }
    void SetFilename(int32_t id, const Filename& value) { SetData(id, GeData(value)); }
    void SetVoid(int32_t id, void* value) { SetData(id, GeData::FromPointer(value)); }
    void SetContainer(int32_t id, const BaseContainer& value) { SetData(id, GeData(value)); }
    void SetLink(int32_t id, BaseList2D* value) { SetData(id, GeData(value)); }
    /// Appends without looking for the number: menus hold one number many times.
    void InsData(int32_t id, GeData data) { entries_.push_back({id, std::move(data)}); }
    /// The same at a place: before the entry that is there now, or last for an index behind the end.
    void InsDataAt(int32_t index, int32_t id, GeData data);

    bool RemoveData(int32_t id);
    void FlushAll() { entries_.clear(); }

    bool operator==(const BaseContainer&) const = default;

private:
    struct Entry {
        int32_t id;
        GeData data;
        bool operator==(const Entry&) const = default;
    };
    int32_t id_ = 0;
    std::vector<Entry> entries_;
};
