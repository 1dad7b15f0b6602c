// SPDX-License-Identifier: MIT
#pragma once

#include "engine/qsl_machine.h"
#include "engine/qsl_tree.h"

#include <optional>

namespace engine {

/// What an operator between two values does.
struct QSLJoin {
    QSLOp op;
    QSLType result;
    unsigned n;           ///< Components that the operation is wide.
    bool swapped = false; ///< It takes the right value first.
};

/// Nothing when the operator doesn't join values of these types.
std::optional<QSLJoin> joinOf(QSLOperator op, QSLType left, QSLType right);

/// The type of both, or of the reals that both may be; nothing when there is none.
std::optional<QSLType> commonType(QSLType a, QSLType b);

} // namespace engine
