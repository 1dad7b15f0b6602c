// SPDX-License-Identifier: MIT
#pragma once

#include "engine/qsl_builtins.h"
#include "engine/qsl_tree.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace engine {

/// "name(type, type)" for messages.
std::string qslSignature(std::string_view name, const std::vector<QSLType>& types);

/// Finds the function that a call means: one of the program's own before one that the language has, exact
/// types before whole numbers taken for reals.
class QSLFunctions {
public:
    /// Throws QSLFault when a function is defined twice, or when there are too many.
    explicit QSLFunctions(const QSLTree& tree);

    /// One of the two, or neither.
    struct Found {
        const QSLFunction* own = nullptr;
        const QSLBuiltin* builtin = nullptr;
    };
    Found find(std::string_view name, const std::vector<QSLType>& arguments) const;
    bool knows(std::string_view name) const;
    /// The first function of the name.
    const QSLFunction* first(std::string_view name) const;

private:
    std::unordered_map<std::string_view, std::vector<const QSLFunction*>> own_;
};

/// Throws QSLFault when a function calls itself, directly or through others.
void refuseRecursion(const QSLTree& tree, const std::vector<std::vector<size_t>>& callees);

} // namespace engine
