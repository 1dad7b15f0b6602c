// SPDX-License-Identifier: MIT
#pragma once

#include "engine/qsl_compiler.h"
#include "engine/qsl_machine.h"
#include "engine/qsl_tree.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <vector>

namespace engine {

/// A value while a program is compiled: known already, or in slots of the frame.
struct QSLValue {
    QSLType type = QSLType::REAL;
    bool constant = false;
    std::uint16_t slot = 0;
    std::array<float, 3> numbers{}; ///< Of a constant.
};

/// Writes steps, and hands out the frame's slots. Slots above a mark are free again when `finish` puts a
/// result there; a step reads its operands before it writes, so that the result may lie where they lay.
class QSLEmitter {
public:
    /// A silent emitter checks the same and keeps no steps.
    void setSilent(bool silent) { silent_ = silent; }
    /// Faults name this place from now on.
    void setPlace(const QSLPlace& place) { place_ = place; }

    unsigned mark() const { return top_; }
    QSLValue reserve(QSLType type);
    /// Does the operation on up to three operands and leaves the result at the mark; when all are known and
    /// `folds`, without a step.
    QSLValue finish(unsigned mark, QSLType type, QSLOp op, unsigned n,
                    std::initializer_list<QSLValue> operands, bool folds = true);
    /// Frees the slots from the mark on, puts nothing there.
    void release(unsigned mark) { top_ = mark; }

    void move(const QSLValue& from, const QSLValue& to);
    /// Gives the step to be completed by `land`.
    size_t jump();
    size_t jumpUnless(const QSLValue& condition);
    /// Lets the jump lead to the step that comes next.
    void land(size_t jump);

    /// The code, with `value` as its result.
    QSLCode take(const QSLValue& value, bool takes_position);

private:
    std::uint16_t slotOf(const QSLValue& value);
    size_t push(const QSLStep& step, unsigned cost);
    [[noreturn]] void failTooLarge() const;

    bool silent_ = false;
    QSLPlace place_;
    unsigned top_ = 0, widest_ = 0, cost_ = 0;
    std::vector<QSLStep> steps_;
    std::vector<float> constants_{0.0f};
    std::map<std::array<std::uint32_t, 4>, std::uint16_t> known_constants_;
};

} // namespace engine
