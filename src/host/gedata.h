// SPDX-License-Identifier: MIT
#pragma once

#include "host/baselink.h"
#include "host/basetime.h"
#include "host/filename.h"
#include "host/vector.h"

#include <memory>
#include <variant>

class BaseContainer;

enum DataType : int32_t {
    DA_NIL = 0,
    DA_LONG,
    DA_REAL,
    DA_VECTOR,
    DA_MATRIX,
    DA_TIME,
    DA_STRING,
    DA_FILENAME,
    DA_CONTAINER,
    DA_LINK,
    DA_VOID,
    DA_CUSTOM,
};

/// A value with a type of its own (in/exclude lists, gradients, ...) inside a GeData.
class CustomDataType {
public:
    virtual ~CustomDataType() = default;
    virtual int32_t GetDataTypeID() const = 0;
    virtual CustomDataType* GetClone() const = 0;
};

/// One typed value of a container. A bool is a long of 0 or 1. Reading as another numeric type converts;
/// reading as a type that doesn't fit gives that type's empty value.
class GeData {
public:
    GeData();
    GeData(bool value);
    GeData(int32_t value);
    GeData(float value);
    GeData(double value);
    GeData(const Vector& value);
    GeData(const Matrix& value);
    GeData(const BaseTime& value);
    GeData(const String& value);
    GeData(const char* value);
    GeData(const Filename& value);
    GeData(const BaseContainer& value);
    GeData(const BaseLink& value);
    GeData(BaseList2D* value);
    /// Copies `value`.
    GeData(const CustomDataType& value);
    static GeData FromPointer(void* value);
    GeData(const GeData& other);
    GeData(GeData&& other) noexcept;
    GeData& operator=(const GeData& other);
    GeData& operator=(GeData&& other) noexcept;
    ~GeData();

    int32_t GetType() const;
    bool GetBool() const;
    int32_t GetLong() const;
    float GetReal() const;
    Vector GetVector() const;
    Matrix GetMatrix() const;
    BaseTime GetTime() const;
    String GetString() const;
    Filename GetFilename() const;
    void* GetVoid() const;
    /// Null unless the value is a container.
    const BaseContainer* GetContainer() const;
    BaseContainer* GetContainer();
    /// Null unless the value is a link.
    const BaseLink* GetBaseLink() const;
    BaseList2D* GetLink(const BaseDocument* document = nullptr, int32_t type = 0) const;
    /// The live custom value, or null when the value is of another type.
    CustomDataType* GetCustomDataType(int32_t type) const;

    bool operator==(const GeData& other) const;

private:
    using Value = std::variant<std::monostate, int32_t, float, Vector, std::unique_ptr<Matrix>, BaseTime,
                               String, Filename, std::unique_ptr<BaseContainer>, BaseLink, void*,
                               std::unique_ptr<CustomDataType>>;
    Value value_;
};
