// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "foundation/types.h"

namespace Quenza {

/// One value of the renderer's settings.
class BaseSetting : public RefCounted {
public:
    enum Type : u32 {
        INT = 0,
        BOOL = 1,
        DOUBLE = 2,
    };

    explicit BaseSetting(u32 setting_type) : type(setting_type) {}
    virtual Ref<BaseSetting> clone() const = 0;
    /// The text of the value in a scene file.
    virtual String toString() const = 0;

    u32 type;
};

class IntSetting : public BaseSetting {
public:
    static constexpr u32 TYPE = INT;

    explicit IntSetting(i32 v) : BaseSetting(TYPE), value(v) {}
    Ref<BaseSetting> clone() const override;
    String toString() const override;

    i32 value;
};

class BoolSetting : public BaseSetting {
public:
    static constexpr u32 TYPE = BOOL;

    explicit BoolSetting(bool v) : BaseSetting(TYPE), value(v) {}
    Ref<BaseSetting> clone() const override;
    String toString() const override;

    bool value;
};

class DoubleSetting : public BaseSetting {
public:
    static constexpr u32 TYPE = DOUBLE;

    explicit DoubleSetting(double v) : BaseSetting(TYPE), value(v) {}
    Ref<BaseSetting> clone() const override;
    String toString() const override;

    double value;
};

} // namespace Quenza
