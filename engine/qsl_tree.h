// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace engine {

/// The types of QSL. A whole number serves wherever a real is wanted.
enum class QSLType : std::uint8_t { REAL, INT, BOOL, VEC2, VEC3 };

const char* nameOf(QSLType type);
/// How many floats hold a value.
constexpr unsigned sizeOf(QSLType type) {
    return type == QSLType::VEC2 ? 2 : type == QSLType::VEC3 ? 3 : 1;
}

/// One of the texts that make up a program.
struct QSLText {
    std::string name; ///< Of an included file; empty for the shader's own text.
    std::string text;
};

/// Line and column count from 1; a column is a character.
struct QSLPlace {
    Quenza::u32 text = 0; ///< Which of the program's texts.
    Quenza::u32 line = 1, column = 1;
};

/// Why a program doesn't compile. Thrown within the compiler.
struct QSLFault {
    QSLPlace place;
    std::string reason;
};

enum class QSLOperator : std::uint8_t {
    OR,
    AND,
    EQUAL,
    NOT_EQUAL,
    LESS,
    LESS_EQUAL,
    GREATER,
    GREATER_EQUAL,
    ADD,
    SUBTRACT,
    MULTIPLY,
    DIVIDE,
    NEGATE,
    NOT
};

const char* nameOf(QSLOperator op);

/// A part of an expression. Nodes refer to each other by their indices in the tree, so that a deep tree is
/// freed without recursion.
struct QSLNode {
    enum class Kind : std::uint8_t { NUMBER, NAME, CALL, UNARY, BINARY };

    Kind kind = Kind::NUMBER;
    QSLOperator op = QSLOperator::ADD;
    QSLType type = QSLType::REAL; ///< Of a number.
    QSLPlace place;
    float number = 0;
    std::string_view name;
    std::vector<Quenza::u32> children;
};

struct QSLFunction {
    std::string_view name;
    QSLPlace place;
    std::vector<std::pair<QSLType, std::string_view>> params;
    QSLType result = QSLType::REAL;
    Quenza::u32 body = 0;
};

/// Definitions as they stand in the texts, which must stay in memory.
struct QSLTree {
    std::vector<QSLNode> nodes;
    std::vector<QSLFunction> functions;
};

} // namespace engine
