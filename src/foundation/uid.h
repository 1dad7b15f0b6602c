// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "foundation/types.h"

namespace Quenza {

/// Identifier of a scene node, unique within a scene.
class SceneNodeUID {
public:
    /// Stands for "none", as a plain number and as a UID of its own.
    static constexpr u32 INVALID_VALUE = 0xFFFFFFFF;
    static const SceneNodeUID INVALID;

    constexpr SceneNodeUID() = default;
    constexpr explicit SceneNodeUID(u32 value) : value_(value) {}

    constexpr u32 value() const { return value_; }
    constexpr bool isValid() const { return value_ != INVALID_VALUE; }
    /// Decimal.
    String toString() const;

    friend constexpr bool operator==(SceneNodeUID a, SceneNodeUID b) { return a.value_ == b.value_; }
    friend constexpr bool operator<(SceneNodeUID a, SceneNodeUID b) { return a.value_ < b.value_; }

private:
    u32 value_ = INVALID_VALUE;
};

inline constexpr SceneNodeUID SceneNodeUID::INVALID{};

} // namespace Quenza
