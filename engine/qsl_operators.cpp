// SPDX-License-Identifier: MIT
#include "engine/qsl_operators.h"

namespace engine {

namespace {

bool isNumber(QSLType type) {
    return type == QSLType::REAL || type == QSLType::INT;
}

bool isVector(QSLType type) {
    return type == QSLType::VEC2 || type == QSLType::VEC3;
}

/// Plus and minus: two numbers, or two vectors alike.
std::optional<QSLJoin> sumOf(QSLOp op, const std::optional<QSLType>& common) {
    if (!common || *common == QSLType::BOOL) {
        return std::nullopt;
    }
    return QSLJoin{op, *common, sizeOf(*common)};
}

std::optional<QSLJoin> productOf(QSLType left, QSLType right) {
    if (isNumber(left) && isNumber(right)) {
        return QSLJoin{QSLOp::MULTIPLY, *commonType(left, right), 1};
    }
    if (isVector(left) && isNumber(right)) {
        return QSLJoin{QSLOp::SCALE, left, sizeOf(left)};
    }
    if (isNumber(left) && isVector(right)) {
        return QSLJoin{QSLOp::SCALE, right, sizeOf(right), true};
    }
    return std::nullopt;
}

std::optional<QSLJoin> quotientOf(QSLType left, QSLType right) {
    if (isNumber(left) && isNumber(right)) {
        const QSLType common = *commonType(left, right);
        return QSLJoin{common == QSLType::INT ? QSLOp::DIVIDE_INT : QSLOp::DIVIDE, common, 1};
    }
    if (isVector(left) && isNumber(right)) {
        return QSLJoin{QSLOp::SHRINK, left, sizeOf(left)};
    }
    return std::nullopt;
}

} // namespace

std::optional<QSLType> commonType(QSLType a, QSLType b) {
    if (a == b) {
        return a;
    }
    return isNumber(a) && isNumber(b) ? std::optional(QSLType::REAL) : std::nullopt;
}

std::optional<QSLJoin> joinOf(QSLOperator op, QSLType left, QSLType right) {
    const std::optional<QSLType> common = commonType(left, right);
    const bool numbers = isNumber(left) && isNumber(right);
    const bool truths = common == QSLType::BOOL;
    const auto comparing = [&](bool fits, QSLOp comparison, bool swapped = false) {
        return fits ? std::optional(QSLJoin{comparison, QSLType::BOOL, sizeOf(*common), swapped})
                    : std::nullopt;
    };
    switch (op) {
    case QSLOperator::OR:
        return comparing(truths, QSLOp::OR);
    case QSLOperator::AND:
        return comparing(truths, QSLOp::AND);
    case QSLOperator::EQUAL:
        return comparing(common.has_value(), QSLOp::EQUAL);
    case QSLOperator::NOT_EQUAL:
        return comparing(common.has_value(), QSLOp::NOT_EQUAL);
    case QSLOperator::LESS:
        return comparing(numbers, QSLOp::LESS);
    case QSLOperator::LESS_EQUAL:
        return comparing(numbers, QSLOp::LESS_EQUAL);
    case QSLOperator::GREATER:
        return comparing(numbers, QSLOp::LESS, true);
    case QSLOperator::GREATER_EQUAL:
        return comparing(numbers, QSLOp::LESS_EQUAL, true);
    case QSLOperator::ADD:
        return sumOf(QSLOp::ADD, common);
    case QSLOperator::SUBTRACT:
        return sumOf(QSLOp::SUBTRACT, common);
    case QSLOperator::MULTIPLY:
        return productOf(left, right);
    case QSLOperator::DIVIDE:
        return quotientOf(left, right);
    case QSLOperator::NEGATE:
    case QSLOperator::NOT:
        break;
    }
    return std::nullopt;
}

} // namespace engine
