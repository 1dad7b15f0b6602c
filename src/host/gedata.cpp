// SPDX-License-Identifier: MIT
#include "host/gedata.h"

#include "host/basecontainer.h"

#include <cmath>
#include <limits>

namespace {

int32_t truncate(float value) {
    if (std::isnan(value)) {
        return 0;
    }
    if (value >= 2147483648.0f) {
        return std::numeric_limits<int32_t>::max();
    }
    return value < -2147483648.0f ? std::numeric_limits<int32_t>::min() : static_cast<int32_t>(value);
}

} // namespace

GeData::GeData() = default;
GeData::GeData(bool value) : value_(int32_t(value)) {}
GeData::GeData(int32_t value) : value_(value) {}
GeData::GeData(float value) : value_(value) {}
GeData::GeData(double value) : value_(static_cast<float>(value)) {}
GeData::GeData(const Vector& value) : value_(value) {}
GeData::GeData(const Matrix& value) : value_(std::make_unique<Matrix>(value)) {}
GeData::GeData(const BaseTime& value) : value_(value) {}
GeData::GeData(const String& value) : value_(value) {}
GeData::GeData(const char* value) : value_(String(value)) {}
GeData::GeData(const Filename& value) : value_(value) {}
GeData::GeData(const BaseContainer& value) : value_(std::make_unique<BaseContainer>(value)) {}
GeData::GeData(const BaseLink& value) : value_(value) {}
GeData::GeData(BaseList2D* value) : value_(BaseLink(value)) {}
GeData::GeData(const CustomDataType& value) : value_(std::unique_ptr<CustomDataType>(value.GetClone())) {}
GeData::GeData(GeData&& other) noexcept = default;
GeData& GeData::operator=(GeData&& other) noexcept = default;
GeData::~GeData() = default;

GeData GeData::FromPointer(void* value) {
    GeData data;
    data.value_ = value;
    return data;
}

GeData::GeData(const GeData& other) {
    *this = other;
}

GeData& GeData::operator=(const GeData& other) {
    if (this == &other) {
        return *this;
    }
    std::visit(
        [this](const auto& value) {
            using T = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<T, std::unique_ptr<Matrix>>) {
                value_ = std::make_unique<Matrix>(*value);
            } else if constexpr (std::is_same_v<T, std::unique_ptr<BaseContainer>>) {
                value_ = std::make_unique<BaseContainer>(*value);
            } else if constexpr (std::is_same_v<T, std::unique_ptr<CustomDataType>>) {
                value_ = std::unique_ptr<CustomDataType>(value->GetClone());
            } else {
                value_ = value;
            }
        },
        other.value_);
    return *this;
}

int32_t GeData::GetType() const {
    static constexpr int32_t types[] = {DA_NIL,       DA_LONG, DA_REAL,   DA_VECTOR,
                                        DA_MATRIX,    DA_TIME, DA_STRING, DA_FILENAME,
                                        DA_CONTAINER, DA_LINK, DA_VOID,   DA_CUSTOM};
    return types[value_.index()];
}

bool GeData::GetBool() const {
    return GetLong() != 0;
}

int32_t GeData::GetLong() const {
    if (const auto* value = std::get_if<int32_t>(&value_)) {
        return *value;
    }
    const auto* real = std::get_if<float>(&value_);
    return real ? truncate(*real) : 0;
}

float GeData::GetReal() const {
    if (const auto* value = std::get_if<float>(&value_)) {
        return *value;
    }
    const auto* integer = std::get_if<int32_t>(&value_);
    return integer ? static_cast<float>(*integer) : 0.0f;
}

Vector GeData::GetVector() const {
    const auto* value = std::get_if<Vector>(&value_);
    return value ? *value : Vector();
}

Matrix GeData::GetMatrix() const {
    const auto* value = std::get_if<std::unique_ptr<Matrix>>(&value_);
    return value ? **value : Matrix();
}

BaseTime GeData::GetTime() const {
    const auto* value = std::get_if<BaseTime>(&value_);
    return value ? *value : BaseTime();
}

String GeData::GetString() const {
    const auto* value = std::get_if<String>(&value_);
    return value ? *value : String();
}

Filename GeData::GetFilename() const {
    const auto* value = std::get_if<Filename>(&value_);
    return value ? *value : Filename();
}

void* GeData::GetVoid() const {
    const auto* value = std::get_if<void*>(&value_);
    return value ? *value : nullptr;
}

const BaseContainer* GeData::GetContainer() const {
    const auto* value = std::get_if<std::unique_ptr<BaseContainer>>(&value_);
    return value ? value->get() : nullptr;
}

BaseContainer* GeData::GetContainer() {
    const auto* value = std::get_if<std::unique_ptr<BaseContainer>>(&value_);
    return value ? value->get() : nullptr;
}

const BaseLink* GeData::GetBaseLink() const {
    return std::get_if<BaseLink>(&value_);
}

BaseList2D* GeData::GetLink(const BaseDocument* document, int32_t type) const {
    const BaseLink* const link = GetBaseLink();
    return link ? link->GetLink(document, type) : nullptr;
}

CustomDataType* GeData::GetCustomDataType(int32_t type) const {
    const auto* value = std::get_if<std::unique_ptr<CustomDataType>>(&value_);
    return value && (*value)->GetDataTypeID() == type ? value->get() : nullptr;
}

bool GeData::operator==(const GeData& other) const {
    if (value_.index() != other.value_.index()) {
        return false;
    }
    return std::visit(
        [&other](const auto& value) {
            using T = std::decay_t<decltype(value)>;
            const T& otherValue = std::get<T>(other.value_);
            if constexpr (std::is_same_v<T, std::unique_ptr<CustomDataType>>) {
                return value == otherValue;
            } else if constexpr (std::is_same_v<T, std::unique_ptr<Matrix>> ||
                                 std::is_same_v<T, std::unique_ptr<BaseContainer>>) {
                return *value == *otherValue;
            } else {
                return value == otherValue;
            }
        },
        value_);
}
