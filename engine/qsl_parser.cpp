// SPDX-License-Identifier: MIT
#include "engine/qsl_parser.h"

#include "engine/qsl_lexer.h"
#include "foundation/types.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace engine {

namespace {

using Quenza::u32;
using Kind = QSLToken::Kind;

constexpr size_t MAX_TEXT = 1 << 20;
/// Brackets, calls and signs within each other.
constexpr int MAX_NESTING = 250;
/// Of a function, and of a call.
constexpr size_t MAX_ARGUMENTS = 32;

struct Binary {
    QSLOperator op;
    int precedence;
};

std::optional<Binary> binaryOf(const QSLToken& token) {
    constexpr std::array<Binary, 12> OPERATORS = {{{QSLOperator::OR, 1},
                                                   {QSLOperator::AND, 2},
                                                   {QSLOperator::EQUAL, 3},
                                                   {QSLOperator::NOT_EQUAL, 3},
                                                   {QSLOperator::LESS, 4},
                                                   {QSLOperator::LESS_EQUAL, 4},
                                                   {QSLOperator::GREATER, 4},
                                                   {QSLOperator::GREATER_EQUAL, 4},
                                                   {QSLOperator::ADD, 5},
                                                   {QSLOperator::SUBTRACT, 5},
                                                   {QSLOperator::MULTIPLY, 6},
                                                   {QSLOperator::DIVIDE, 6}}};
    for (const Binary& binary : OPERATORS) {
        if (token.is(nameOf(binary.op))) {
            return binary;
        }
    }
    return std::nullopt;
}

std::optional<QSLType> typeOf(const QSLToken& token) {
    for (const QSLType type : {QSLType::REAL, QSLType::INT, QSLType::BOOL, QSLType::VEC2, QSLType::VEC3}) {
        if (token.isName(nameOf(type))) {
            return type;
        }
    }
    return std::nullopt;
}

class Parser {
public:
    Parser(const QSLText& text, u32 index, QSLTree& tree) : lexer_(text.text, index), tree_(tree) {}

    void parse() {
        while (token().kind != Kind::END) {
            parseDefinition();
        }
    }

private:
    const QSLToken& token() const { return lexer_.token(); }

    [[noreturn]] void failExpecting(const std::string& what) const {
        throw QSLFault{token().place, what + " is expected, not " + token().described()};
    }

    void expect(const char* symbol) {
        if (!token().is(symbol)) {
            failExpecting("'" + std::string(symbol) + "'");
        }
        lexer_.advance();
    }

    bool accept(const char* symbol) {
        const bool there = token().is(symbol);
        if (there) {
            lexer_.advance();
        }
        return there;
    }

    void limitArguments(size_t count) const {
        if (count > MAX_ARGUMENTS) {
            throw QSLFault{token().place,
                           "There are more than " + std::to_string(MAX_ARGUMENTS) + " arguments"};
        }
    }

    QSLType expectType() {
        const std::optional<QSLType> type = typeOf(token());
        if (!type) {
            failExpecting("A type (real, int, bool, vec2 or vec3)");
        }
        lexer_.advance();
        return *type;
    }

    std::string_view expectNewName(const char* what) {
        if (token().kind != Kind::NAME || typeOf(token()) || token().isName("def") ||
            token().isName("true") || token().isName("false")) {
            failExpecting(what);
        }
        const std::string_view name = token().text;
        lexer_.advance();
        return name;
    }

    void parseDefinition() {
        if (!token().isName("def")) {
            failExpecting("'def'");
        }
        lexer_.advance();
        QSLFunction function;
        function.place = token().place;
        function.name = expectNewName("The name of a function");
        expect("(");
        if (!accept(")")) {
            do {
                const QSLType type = expectType();
                function.params.emplace_back(type, expectNewName("The name of an argument"));
                limitArguments(function.params.size());
            } while (accept(","));
            expect(")");
        }
        function.result = expectType();
        expect(":");
        function.body = parseExpression(1);
        tree_.functions.push_back(std::move(function));
    }

    u32 add(QSLNode node) {
        tree_.nodes.push_back(std::move(node));
        return u32(tree_.nodes.size() - 1);
    }

    u32 parseExpression(int precedence) {
        u32 left = parseOperand();
        for (std::optional<Binary> found = binaryOf(token()); found && found->precedence >= precedence;
             found = binaryOf(token())) {
            QSLNode node;
            node.kind = QSLNode::Kind::BINARY;
            node.op = found->op;
            node.place = token().place;
            lexer_.advance();
            const u32 right = parseExpression(found->precedence + 1);
            node.children = {left, right};
            left = add(std::move(node));
        }
        return left;
    }

    u32 parseOperand() {
        if (++nesting_ > MAX_NESTING) {
            throw QSLFault{token().place, "The expression is nested too deeply"};
        }
        const u32 node = parseNestedOperand();
        --nesting_;
        return node;
    }

    u32 parseNestedOperand() {
        QSLNode node;
        node.place = token().place;
        if (token().is("-") || token().is("!")) {
            node.kind = QSLNode::Kind::UNARY;
            node.op = token().is("-") ? QSLOperator::NEGATE : QSLOperator::NOT;
            lexer_.advance();
            node.children = {parseOperand()};
            return add(std::move(node));
        }
        if (accept("(")) {
            const u32 inner = parseExpression(1);
            expect(")");
            return inner;
        }
        if (token().kind == Kind::REAL || token().kind == Kind::INT) {
            node.type = token().kind == Kind::REAL ? QSLType::REAL : QSLType::INT;
            node.number = token().number;
            lexer_.advance();
            return add(std::move(node));
        }
        if (token().kind != Kind::NAME || token().isName("def")) {
            failExpecting("An expression");
        }
        return parseNamed(std::move(node));
    }

    u32 parseNamed(QSLNode node) {
        node.name = token().text;
        const bool is_true = token().isName("true");
        const bool is_boolean = is_true || token().isName("false");
        lexer_.advance();
        if (is_boolean) {
            node.type = QSLType::BOOL;
            node.number = is_true ? 1.0f : 0.0f;
            return add(std::move(node));
        }
        node.kind = QSLNode::Kind::NAME;
        if (accept("(")) {
            node.kind = QSLNode::Kind::CALL;
            if (!accept(")")) {
                do {
                    node.children.push_back(parseExpression(1));
                    limitArguments(node.children.size());
                } while (accept(","));
                expect(")");
            }
        }
        return add(std::move(node));
    }

    QSLLexer lexer_;
    QSLTree& tree_;
    int nesting_ = 0;
};

} // namespace

QSLTree parseQSL(const std::vector<QSLText>& texts) {
    QSLTree tree;
    size_t total = 0;
    for (u32 i = 0; i < texts.size(); ++i) {
        total += texts[i].text.size();
        if (total > MAX_TEXT) {
            throw QSLFault{{i, 1, 1}, "The program is longer than " + std::to_string(MAX_TEXT) + " bytes"};
        }
        Parser(texts[i], i, tree).parse();
    }
    return tree;
}

} // namespace engine
