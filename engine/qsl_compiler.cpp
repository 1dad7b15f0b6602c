// SPDX-License-Identifier: MIT
#include "engine/qsl_compiler.h"

#include "engine/qsl_emitter.h"
#include "engine/qsl_functions.h"
#include "engine/qsl_operators.h"
#include "foundation/types.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace engine {

namespace {

using Quenza::u32;
using Values = std::vector<QSLValue>;

/// Nodes within nodes, across calls.
constexpr int MAX_DEPTH = 600;
/// Nodes that are gone through for the code of an entry.
constexpr int MAX_VISITS = 200000;

std::vector<QSLType> typesOf(const Values& values) {
    std::vector<QSLType> types;
    for (const QSLValue& value : values) {
        types.push_back(value.type);
    }
    return types;
}

class Compiler {
public:
    Compiler(const QSLTree& tree, size_t textures)
        : tree_(tree), functions_(tree), textures_(textures), callees_(tree.functions.size()),
          types_(tree.nodes.size()) {}

    QSLCode compile(const QSLEntry& entry) {
        checkAll();
        const QSLFunction& function = entryFunction(entry);
        Values arguments;
        if (entry.takes_position) {
            arguments.push_back(emitter_.reserve(QSLType::VEC3));
        }
        QSLCode code = emitter_.take(bodyOf(function, std::move(arguments)), entry.takes_position);
        code.textures = std::move(textures_used_);
        return code;
    }

private:
    /// Goes through each function once, used or not, without following calls.
    void checkAll() {
        checking_ = true;
        emitter_.setSilent(true);
        for (const QSLFunction& function : tree_.functions) {
            Values arguments;
            for (const auto& [type, name] : function.params) {
                for (const auto& [other_type, other] : function.params) {
                    if (&other != &name && other == name) {
                        fail(function.place, "Two arguments of '" + std::string(function.name) +
                                                 "' are called '" + std::string(name) + "'");
                    }
                }
                arguments.push_back({type, false, 0, {}});
            }
            visits_ = 0;
            bodyOf(function, std::move(arguments));
            emitter_.release(0);
        }
        refuseRecursion(tree_, callees_);
        checking_ = false;
        emitter_.setSilent(false);
        visits_ = 0;
    }

    const QSLFunction& entryFunction(const QSLEntry& entry) const {
        std::vector<QSLType> params;
        if (entry.takes_position) {
            params.push_back(QSLType::VEC3);
        }
        const QSLFunction* const found = functions_.find("eval", params).own;
        if (found && found->result == entry.result) {
            return *found;
        }
        const QSLFunction* const other = found ? found : functions_.first("eval");
        fail(other ? other->place : QSLPlace{},
             "The function '" + qslSignature("eval", params) + " " + nameOf(entry.result) + "' is missing");
    }

    [[noreturn]] static void fail(const QSLPlace& place, const std::string& reason) {
        throw QSLFault{place, reason};
    }

    /// The function's value for the arguments, with its code set in at this place.
    QSLValue bodyOf(const QSLFunction& function, Values arguments) {
        const auto caller = std::exchange(function_, &function);
        std::swap(arguments, arguments_);
        QSLValue value = valueOf(function.body);
        std::swap(arguments, arguments_);
        function_ = caller;
        if (!convert(value, function.result)) {
            fail(tree_.nodes[function.body].place, "'" + std::string(function.name) + "' is to give " +
                                                       nameOf(function.result) + ", not " +
                                                       nameOf(value.type));
        }
        return value;
    }

    static bool convert(QSLValue& value, QSLType type) {
        if (value.type == QSLType::INT && type == QSLType::REAL) {
            value.type = type;
        }
        return value.type == type;
    }

    QSLValue valueOf(u32 index) {
        const QSLNode& node = tree_.nodes[index];
        if (++depth_ > MAX_DEPTH) {
            fail(node.place, "The expression is nested too deeply");
        }
        if (++visits_ > MAX_VISITS && !checking_) {
            fail(node.place, "The program is too large");
        }
        emitter_.setPlace(node.place);
        const QSLValue value = valueOf(node, index);
        --depth_;
        if (checking_) {
            types_[index] = value.type;
        }
        return value;
    }

    QSLValue valueOf(const QSLNode& node, u32 index) {
        switch (node.kind) {
        case QSLNode::Kind::NUMBER:
            return {node.type, true, 0, {node.number, 0, 0}};
        case QSLNode::Kind::NAME:
            return named(node);
        case QSLNode::Kind::UNARY:
            return unary(node);
        case QSLNode::Kind::BINARY:
            return binary(index);
        case QSLNode::Kind::CALL:
            return node.name == "if" ? choice(node, index) : call(node);
        }
        return {};
    }

    QSLValue named(const QSLNode& node) const {
        for (size_t i = 0; i < function_->params.size(); ++i) {
            if (function_->params[i].second == node.name) {
                return arguments_[i];
            }
        }
        fail(node.place, "'" + std::string(node.name) + "' is not known here");
    }

    QSLValue unary(const QSLNode& node) {
        const unsigned mark = emitter_.mark();
        const QSLValue value = valueOf(node.children[0]);
        const bool fits = (node.op == QSLOperator::NOT) == (value.type == QSLType::BOOL);
        if (!fits) {
            fail(node.place, "'" + std::string(nameOf(node.op)) + "' takes no " + nameOf(value.type));
        }
        const QSLOp op = node.op == QSLOperator::NOT ? QSLOp::NOT : QSLOp::NEGATE;
        return emitter_.finish(mark, value.type, op, sizeOf(value.type), {value});
    }

    /// A long sum is a tree that leans far to the left; it is gone down in a loop.
    QSLValue binary(u32 index) {
        std::vector<u32> chain;
        for (; tree_.nodes[index].kind == QSLNode::Kind::BINARY; index = tree_.nodes[index].children[0]) {
            chain.push_back(index);
        }
        visits_ += int(chain.size());
        const unsigned mark = emitter_.mark();
        QSLValue left = valueOf(index);
        for (; !chain.empty(); chain.pop_back()) {
            const QSLNode& node = tree_.nodes[chain.back()];
            const QSLValue right = valueOf(node.children[1]);
            emitter_.setPlace(node.place);
            left = join(mark, node, left, right);
        }
        return left;
    }

    QSLValue join(unsigned mark, const QSLNode& node, const QSLValue& a, const QSLValue& b) {
        const std::optional<QSLJoin> form = joinOf(node.op, a.type, b.type);
        if (!form) {
            fail(node.place, "'" + std::string(nameOf(node.op)) + "' doesn't join " + nameOf(a.type) +
                                 " and " + nameOf(b.type));
        }
        return emitter_.finish(mark, form->result, form->op, form->n,
                               {form->swapped ? b : a, form->swapped ? a : b});
    }

    /// if(condition, then, else): only one of the two is worked out.
    QSLValue choice(const QSLNode& node, u32 index) {
        if (node.children.size() != 3) {
            fail(node.place, "'if' takes a condition and two values");
        }
        const unsigned mark = emitter_.mark();
        const QSLValue condition = valueOf(node.children[0]);
        if (condition.type != QSLType::BOOL) {
            fail(node.place, "'if' takes a bool first, not " + std::string(nameOf(condition.type)));
        }
        if (condition.constant && !checking_) {
            emitter_.release(mark);
            QSLValue value = valueOf(node.children[condition.numbers[0] != 0 ? 1 : 2]);
            convert(value, types_[index]);
            return value;
        }
        emitter_.release(mark);
        const size_t over_first = emitter_.jumpUnless(condition);
        // Wide enough for whatever both turn out to be.
        QSLValue result = emitter_.reserve(QSLType::VEC3);
        const QSLValue first = valueOf(node.children[1]);
        result.type = first.type;
        emitter_.move(first, result);
        emitter_.release(unsigned(result.slot) + 3);
        const size_t over_second = emitter_.jump();
        emitter_.land(over_first);
        const QSLValue second = valueOf(node.children[2]);
        const std::optional<QSLType> common = commonType(first.type, second.type);
        if (!common) {
            fail(node.place, "'if' takes two values of one type, not " + std::string(nameOf(first.type)) +
                                 " and " + nameOf(second.type));
        }
        result.type = *common;
        emitter_.move(second, result);
        emitter_.land(over_second);
        emitter_.release(unsigned(result.slot) + 3);
        return result;
    }

    QSLValue call(const QSLNode& node) {
        const unsigned mark = emitter_.mark();
        Values arguments;
        arguments.reserve(node.children.size());
        for (const u32 child : node.children) {
            arguments.push_back(valueOf(child));
        }
        emitter_.setPlace(node.place);
        const QSLFunctions::Found found = functions_.find(node.name, typesOf(arguments));
        if (found.own) {
            return ownCall(*found.own, std::move(arguments));
        }
        if (found.builtin) {
            return builtinCall(node, mark, *found.builtin, arguments);
        }
        if (!functions_.knows(node.name)) {
            fail(node.place, "There is no function '" + std::string(node.name) + "'");
        }
        fail(node.place, "There is no '" + qslSignature(node.name, typesOf(arguments)) + "'");
    }

    QSLValue ownCall(const QSLFunction& function, Values arguments) {
        if (checking_) {
            callees_[size_t(function_ - tree_.functions.data())].push_back(
                size_t(&function - tree_.functions.data()));
            return {function.result, false, 0, {}};
        }
        for (size_t i = 0; i < arguments.size(); ++i) {
            convert(arguments[i], function.params[i].first);
        }
        return bodyOf(function, std::move(arguments));
    }

    QSLValue builtinCall(const QSLNode& node, unsigned mark, const QSLBuiltin& builtin,
                         const Values& arguments) {
        if (builtin.op == QSLOp::SAMPLE_TEXTURE && arguments[0].constant &&
            !(arguments[0].numbers[0] >= 0 && arguments[0].numbers[0] < float(textures_))) {
            fail(node.place, "The material has no texture " + std::to_string(int(arguments[0].numbers[0])));
        }
        if (builtin.op == QSLOp::SAMPLE_TEXTURE && arguments[0].constant && !checking_) {
            textures_used_.insert(size_t(arguments[0].numbers[0]));
        }
        const bool picks = builtin.op >= QSLOp::PICK_X && builtin.op <= QSLOp::PICK_Z;
        if (picks || builtin.op == QSLOp::MOVE) {
            return component(arguments[0], picks ? unsigned(builtin.op) - unsigned(QSLOp::PICK_X) : 0,
                             builtin.result);
        }
        const bool folds = !builtin.asks_surface;
        switch (arguments.size()) {
        case 0:
            return emitter_.finish(mark, builtin.result, builtin.op, builtin.n, {}, folds);
        case 1:
            return emitter_.finish(mark, builtin.result, builtin.op, builtin.n, {arguments[0]}, folds);
        case 2:
            return emitter_.finish(mark, builtin.result, builtin.op, builtin.n, {arguments[0], arguments[1]},
                                   folds);
        default:
            return emitter_.finish(mark, builtin.result, builtin.op, builtin.n,
                                   {arguments[0], arguments[1], arguments[2]}, folds);
        }
    }

    /// Without a step: the slot itself.
    static QSLValue component(QSLValue value, unsigned index, QSLType type) {
        value.type = type;
        value.slot = std::uint16_t(value.slot + index);
        value.numbers = {value.numbers[index], 0, 0};
        return value;
    }

    const QSLTree& tree_;
    QSLFunctions functions_;
    size_t textures_;
    std::set<size_t> textures_used_;
    std::vector<std::vector<size_t>> callees_;
    std::vector<QSLType> types_; ///< Of the nodes, once they are checked.
    QSLEmitter emitter_;
    const QSLFunction* function_ = nullptr; ///< That is gone through.
    Values arguments_;                      ///< Of it.
    bool checking_ = false;
    int depth_ = 0;
    int visits_ = 0;
};

} // namespace

QSLCode compileQSL(const QSLTree& tree, const QSLEntry& entry, size_t textures) {
    return Compiler(tree, textures).compile(entry);
}

} // namespace engine
