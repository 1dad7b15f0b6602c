// SPDX-License-Identifier: MIT
#pragma once

#include "engine/qsl_machine.h"
#include "engine/qsl_tree.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace engine {

/// A function that the language brings along, for one combination of types.
struct QSLBuiltin {
    std::string_view name;
    std::vector<QSLType> params;
    QSLType result;
    QSLOp op;
    std::uint8_t n;            ///< How many components the operation is wide.
    bool asks_surface = false; ///< Its value isn't known before the render.
};

/// All forms of all functions.
const std::vector<QSLBuiltin>& qslBuiltins();

} // namespace engine
