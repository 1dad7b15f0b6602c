// SPDX-License-Identifier: MIT
#pragma once

#include "engine/geometry.h"
#include "engine/texture_map.h"
#include "engine/vec.h"
#include "foundation/vec.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace engine {

/// What a step of a program does with the slots `a`, `b`, `c` and the result's slot. "n" components wide.
enum class QSLOp : std::uint8_t {
    MOVE,        ///< n
    JUMP,        ///< To the step `a`.
    JUMP_UNLESS, ///< To the step `b` when `a` is false.
    NEGATE,      ///< n
    ADD,         ///< n
    SUBTRACT,    ///< n
    MULTIPLY,    ///< n
    DIVIDE,      ///< n
    SCALE,       ///< Vector of n times a number.
    SHRINK,      ///< Vector of n through a number.
    DIVIDE_INT,  ///< Towards zero; 0 through zero.
    MOD_INT,
    LESS,
    LESS_EQUAL,
    EQUAL,     ///< n
    NOT_EQUAL, ///< n
    AND,
    OR,
    NOT,
    PACK,   ///< A vector of n numbers.
    SPREAD, ///< A vector of n times the same number.
    PICK_X, ///< Components are picked by taking the slot.
    PICK_Y,
    PICK_Z,
    TRUNCATE,
    DOT, ///< n
    CROSS,
    LENGTH,    ///< n
    NORMALISE, ///< n
    LERP,      ///< n; `c` is a number.
    MIN,       ///< n
    MAX,       ///< n
    CLAMP,     ///< n
    ABS,       ///< n
    FLOOR,     ///< n
    CEIL,      ///< n
    FRACT,     ///< n
    MOD,
    STEP,
    SMOOTHSTEP,
    POW,
    EXP,
    LOG,
    SQRT,
    SIN,
    COS,
    TAN,
    ASIN,
    ACOS,
    ATAN,
    ATAN2,
    NOISE, ///< Of n coordinates.
    NOISE01,
    FBM, ///< Of n coordinates; `b` is the number of octaves.
    FBM01,
    TEX_COORDS, ///< Of the UV set `a`.
    MIN_COS_THETA,
    SAMPLE_TEXTURE, ///< Image `a` at the coordinates `b`.
};

struct QSLStep {
    QSLOp op = QSLOp::MOVE;
    std::uint8_t n = 1;
    std::uint16_t result = 0, a = 0, b = 0, c = 0;
};

/// What a program can ask about.
struct QSLContext {
    const SurfacePoint& point;
    Quenza::Vec2f uv_shift; ///< Added to all texture coordinates.
    const std::vector<std::shared_ptr<const TextureMap>>& textures;
};

/// Runs the steps on a frame of slots, which must be wide enough for all of them. Jumps lead forward only.
void runQSL(const QSLStep* steps, size_t count, float* frame, const QSLContext& context);

} // namespace engine
