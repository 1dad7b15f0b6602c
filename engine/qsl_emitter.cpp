// SPDX-License-Identifier: MIT
#include "engine/qsl_emitter.h"

#include "engine/noise.h"

#include <algorithm>
#include <bit>
#include <memory>
#include <utility>
#include <vector>

namespace engine {

namespace {

/// Marks a slot that counts from the first constant. The others move behind the constants at the end.
constexpr std::uint16_t CONSTANT = 0x8000;
constexpr size_t MAX_STEPS = 30000;
/// About a millisecond for a run.
constexpr unsigned MAX_COST = 100000;
constexpr unsigned NOISE_COST = 8;

const QSLContext& nowhere() {
    static const SurfacePoint point;
    static const std::vector<std::shared_ptr<const TextureMap>> textures;
    static const QSLContext context{point, {0, 0}, textures};
    return context;
}

unsigned costOf(QSLOp op, const QSLValue* operands) {
    switch (op) {
    case QSLOp::NOISE:
    case QSLOp::NOISE01:
    case QSLOp::SAMPLE_TEXTURE:
        return NOISE_COST;
    case QSLOp::FBM:
    case QSLOp::FBM01:
        return NOISE_COST * (operands[1].constant
                                 ? unsigned(std::clamp(operands[1].numbers[0], 1.0f, float(MAX_OCTAVES)))
                                 : unsigned(MAX_OCTAVES));
    default:
        return 1;
    }
}

bool isJump(QSLOp op) {
    return op == QSLOp::JUMP || op == QSLOp::JUMP_UNLESS;
}

} // namespace

void QSLEmitter::failTooLarge() const {
    throw QSLFault{place_, "The program is too large"};
}

QSLValue QSLEmitter::reserve(QSLType type) {
    QSLValue value;
    value.type = type;
    value.slot = std::uint16_t(top_);
    top_ += sizeOf(type);
    widest_ = silent_ ? widest_ : std::max(widest_, top_);
    if (widest_ > QSLCode::MAX_FRAME) {
        failTooLarge();
    }
    return value;
}

std::uint16_t QSLEmitter::slotOf(const QSLValue& value) {
    if (!value.constant) {
        return value.slot;
    }
    const unsigned size = sizeOf(value.type);
    std::array<std::uint32_t, 4> key{size};
    for (unsigned i = 0; i < size; ++i) {
        key[i + 1] = std::bit_cast<std::uint32_t>(value.numbers[i]);
    }
    const auto [known, added] = known_constants_.try_emplace(key, std::uint16_t(constants_.size()));
    if (added) {
        constants_.insert(constants_.end(), value.numbers.begin(), value.numbers.begin() + size);
        if (constants_.size() > QSLCode::MAX_FRAME) {
            failTooLarge();
        }
    }
    return std::uint16_t(CONSTANT | known->second);
}

size_t QSLEmitter::push(const QSLStep& step, unsigned cost) {
    if (silent_) {
        return 0;
    }
    cost_ += cost;
    if (steps_.size() == MAX_STEPS || cost_ > MAX_COST) {
        failTooLarge();
    }
    steps_.push_back(step);
    return steps_.size() - 1;
}

QSLValue QSLEmitter::finish(unsigned mark, QSLType type, QSLOp op, unsigned n,
                            std::initializer_list<QSLValue> operands, bool folds) {
    release(mark);
    QSLStep step;
    step.op = op;
    step.n = std::uint8_t(n);
    const bool known =
        std::all_of(operands.begin(), operands.end(), [](const QSLValue& v) { return v.constant; });
    if (folds && known) {
        std::array<float, 12> frame{};
        const std::uint16_t slots[3] = {0, 3, 6};
        for (size_t i = 0; i < operands.size(); ++i) {
            const auto& numbers = operands.begin()[i].numbers;
            std::copy(numbers.begin(), numbers.end(), frame.begin() + slots[i]);
        }
        step.a = slots[0], step.b = slots[1], step.c = slots[2];
        step.result = 9;
        runQSL(&step, 1, frame.data(), nowhere());
        return {type, true, 0, {frame[9], frame[10], frame[11]}};
    }
    std::uint16_t slots[3] = {CONSTANT, CONSTANT, CONSTANT};
    for (size_t i = 0; i < operands.size() && !silent_; ++i) {
        slots[i] = slotOf(operands.begin()[i]);
    }
    step.a = slots[0], step.b = slots[1], step.c = slots[2];
    const QSLValue result = reserve(type);
    step.result = result.slot;
    push(step, costOf(op, operands.begin()));
    return result;
}

void QSLEmitter::move(const QSLValue& from, const QSLValue& to) {
    if (!silent_) {
        push({QSLOp::MOVE, std::uint8_t(sizeOf(to.type)), to.slot, slotOf(from), CONSTANT, CONSTANT}, 1);
    }
}

size_t QSLEmitter::jump() {
    return push({QSLOp::JUMP, 1, 0, 0, CONSTANT, CONSTANT}, 1);
}

size_t QSLEmitter::jumpUnless(const QSLValue& condition) {
    return silent_ ? 0 : push({QSLOp::JUMP_UNLESS, 1, 0, slotOf(condition), 0, CONSTANT}, 1);
}

void QSLEmitter::land(size_t jump) {
    if (!silent_) {
        QSLStep& step = steps_[jump];
        (step.op == QSLOp::JUMP ? step.a : step.b) = std::uint16_t(steps_.size());
    }
}

QSLCode QSLEmitter::take(const QSLValue& value, bool takes_position) {
    QSLCode code;
    const std::uint16_t result = slotOf(value);
    const auto shift = std::uint16_t(constants_.size());
    if (shift + widest_ > QSLCode::MAX_FRAME) {
        failTooLarge();
    }
    const auto placed = [shift](std::uint16_t slot) {
        return std::uint16_t((slot & CONSTANT) != 0 ? slot & ~unsigned(CONSTANT) : slot + shift);
    };
    for (QSLStep& step : steps_) {
        if (!isJump(step.op)) {
            step.result = placed(step.result);
            step.b = placed(step.b);
        }
        step.a = step.op == QSLOp::JUMP ? step.a : placed(step.a);
        step.c = placed(step.c);
    }
    code.steps = std::move(steps_);
    code.constants = std::move(constants_);
    code.result = placed(result);
    code.takes_position = takes_position;
    code.is_constant = value.constant;
    return code;
}

} // namespace engine
