// SPDX-License-Identifier: MIT
#pragma once

#include "engine/qsl_machine.h"
#include "engine/qsl_tree.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <vector>

namespace engine {

/// The form of the function `eval` that a renderer calls: with the position, or without arguments.
struct QSLEntry {
    bool takes_position = true;
    QSLType result = QSLType::VEC3;
};

/// A program for the machine. The frame starts with the constants; the position follows where it is taken.
struct QSLCode {
    static constexpr size_t MAX_FRAME = 4096; ///< Slots.

    std::vector<QSLStep> steps;
    std::vector<float> constants; ///< At least one.
    std::uint16_t result = 0;     ///< First slot of the value.
    bool takes_position = false;
    std::set<size_t> textures; ///< The indices that the program names as numbers.
    bool is_constant = false;  ///< The value lies among the constants.
};

/// Checks all functions and makes code of the entry, with the functions that it calls set in place and what
/// needs no surface worked out. Throws QSLFault at errors of names and types, at functions that call
/// themselves, and when the code would get too large or a run of it too slow.
QSLCode compileQSL(const QSLTree& tree, const QSLEntry& entry, size_t textures);

} // namespace engine
