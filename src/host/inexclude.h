// SPDX-License-Identifier: MIT
#pragma once

#include "host/atomarray.h"
#include "host/gedata.h"

inline constexpr int32_t CUSTOMDATATYPE_INEXCLUDE_LIST = 1009290;

/// The value of an in/exclude list: links to objects, each with flags.
class InExcludeData : public CustomDataType {
public:
    int32_t GetDataTypeID() const override { return CUSTOMDATATYPE_INEXCLUDE_LIST; }
    CustomDataType* GetClone() const override { return new InExcludeData(*this); }

    int32_t GetObjectCount() const { return static_cast<int32_t>(entries_.size()); }
    /// Null for a dead link or an object of another document.
    BaseList2D* ObjectFromIndex(const BaseDocument* document, int32_t index) const;
    int32_t GetFlags(int32_t index) const;
    bool InsertObject(BaseList2D* object, int32_t flags);
    /// The living objects of the list that belong to `document`. The caller frees the array.
    AtomArray* GetObjectsIn(const BaseDocument* document) const;
    bool CheckObjectInList(const BaseList2D* object, const BaseDocument* document) const;

    /// For the host, which leads links to the copies when it clones.
    BaseLink& LinkFromIndex(int32_t index) { return entries_[static_cast<size_t>(index)].link; }

private:
    struct Entry {
        BaseLink link;
        int32_t flags;
    };
    std::vector<Entry> entries_;
};
