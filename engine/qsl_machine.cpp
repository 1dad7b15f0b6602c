// SPDX-License-Identifier: MIT
#include "engine/qsl_machine.h"

#include "engine/colour.h"
#include "engine/noise.h"
#include "foundation/types.h"

#include <algorithm>
#include <cmath>

namespace engine {

namespace {

/// What an image that isn't there looks like to a program.
constexpr float GREY = 0.5f;

/// Gives the result's components one by one; the operands are read before any of them is written.
template <class Function>
void each(const QSLStep& step, float* frame, const Function& function) {
    float result[3] = {};
    for (unsigned i = 0; i < step.n; ++i) {
        result[i] = function(i);
    }
    std::copy(result, result + step.n, frame + step.result);
}

template <class Function>
void map1(const QSLStep& step, float* frame, const Function& function) {
    each(step, frame, [&](unsigned i) { return function(frame[step.a + i]); });
}

template <class Function>
void map2(const QSLStep& step, float* frame, const Function& function) {
    each(step, frame, [&](unsigned i) { return function(frame[step.a + i], frame[step.b + i]); });
}

Vec vectorAt(const float* slot, unsigned n) {
    return {slot[0], n > 1 ? slot[1] : 0.0f, n > 2 ? slot[2] : 0.0f};
}

float dotOf(const float* a, const float* b, unsigned n) {
    float sum = 0;
    for (unsigned i = 0; i < n; ++i) {
        sum += a[i] * b[i];
    }
    return sum;
}

/// A whole number that no value makes overflow.
int wholeOf(float value) {
    return value > -1e9f && value < 1e9f ? int(value) : 0;
}

float truth(bool value) {
    return value ? 1.0f : 0.0f;
}

float modulo(float a, float b) {
    return b == 0.0f ? 0.0f : a - b * std::floor(a / b);
}

float smoothStep(float from, float to, float x) {
    const float t = from == to ? truth(x >= to) : std::clamp((x - from) / (to - from), 0.0f, 1.0f);
    return t * t * (3 - 2 * t);
}

float clampBetween(float x, float low, float high) {
    return std::min(std::max(x, low), high);
}

void normaliseAt(const QSLStep& step, float* frame) {
    const float squared = dotOf(frame + step.a, frame + step.a, step.n);
    const float factor = squared > 0.0f ? 1.0f / std::sqrt(squared) : 1.0f;
    map1(step, frame, [factor](float v) { return v * factor; });
}

void crossAt(const QSLStep& step, float* frame) {
    const Vec v = cross(vectorAt(frame + step.a, 3), vectorAt(frame + step.b, 3));
    const float result[3] = {v.x, v.y, v.z};
    std::copy(result, result + 3, frame + step.result);
}

void sampleAt(const QSLStep& step, float* frame, const QSLContext& context) {
    const int index = wholeOf(frame[step.a]);
    const bool there = index >= 0 && size_t(index) < context.textures.size();
    const RGB colour =
        there ? context.textures[size_t(index)]->lookUp(frame[step.b], frame[step.b + 1]) : RGB{GREY};
    const float result[3] = {colour.r, colour.g, colour.b};
    std::copy(result, result + 3, frame + step.result);
}

void texCoordsAt(const QSLStep& step, float* frame, const QSLContext& context) {
    const auto set = Quenza::u32(std::max(0, wholeOf(frame[step.a])));
    const Quenza::Vec2f uv = context.point.uv(set);
    frame[step.result] = uv.x + context.uv_shift.x;
    frame[step.result + 1] = uv.y + context.uv_shift.y;
}

float fbmAt(const QSLStep& step, const float* frame) {
    return perlinFbm(vectorAt(frame + step.a, step.n), wholeOf(frame[step.b]));
}

/// The functions of numbers alone.
void runFunction(const QSLStep& step, float* frame) {
    float& result = frame[step.result];
    const float a = frame[step.a], b = frame[step.b], c = frame[step.c];
    switch (step.op) {
    case QSLOp::MOD:
        result = modulo(a, b);
        break;
    case QSLOp::STEP:
        result = truth(b >= a);
        break;
    case QSLOp::SMOOTHSTEP:
        result = smoothStep(a, b, c);
        break;
    case QSLOp::POW:
        result = std::pow(a, b);
        break;
    case QSLOp::EXP:
        result = std::exp(a);
        break;
    case QSLOp::LOG:
        result = std::log(a);
        break;
    case QSLOp::SQRT:
        result = std::sqrt(std::max(0.0f, a));
        break;
    case QSLOp::SIN:
        result = std::sin(a);
        break;
    case QSLOp::COS:
        result = std::cos(a);
        break;
    case QSLOp::TAN:
        result = std::tan(a);
        break;
    case QSLOp::ASIN:
        result = std::asin(std::clamp(a, -1.0f, 1.0f));
        break;
    case QSLOp::ACOS:
        result = std::acos(std::clamp(a, -1.0f, 1.0f));
        break;
    case QSLOp::ATAN:
        result = std::atan(a);
        break;
    case QSLOp::ATAN2:
        result = std::atan2(a, b);
        break;
    case QSLOp::DIVIDE_INT:
        result = b == 0.0f ? 0.0f : std::trunc(a / b);
        break;
    case QSLOp::MOD_INT:
        result = modulo(a, b);
        break;
    case QSLOp::TRUNCATE:
        result = float(wholeOf(a));
        break;
    case QSLOp::LESS:
        result = truth(a < b);
        break;
    case QSLOp::LESS_EQUAL:
        result = truth(a <= b);
        break;
    case QSLOp::AND:
        result = truth(a != 0 && b != 0);
        break;
    case QSLOp::OR:
        result = truth(a != 0 || b != 0);
        break;
    case QSLOp::NOT:
        result = truth(a == 0);
        break;
    default:
        break;
    }
}

/// Whatever gives one value for each component, or one value of several.
void runVector(const QSLStep& step, float* frame) {
    const float* const a = frame + step.a;
    const float* const b = frame + step.b;
    switch (step.op) {
    case QSLOp::PACK: {
        const float result[3] = {*a, *b, frame[step.c]};
        std::copy(result, result + step.n, frame + step.result);
        break;
    }
    case QSLOp::SPREAD:
        each(step, frame, [&](unsigned) { return *a; });
        break;
    case QSLOp::EQUAL:
        frame[step.result] = truth(std::equal(a, a + step.n, b));
        break;
    case QSLOp::NOT_EQUAL:
        frame[step.result] = truth(!std::equal(a, a + step.n, b));
        break;
    case QSLOp::DOT:
        frame[step.result] = dotOf(a, b, step.n);
        break;
    case QSLOp::LENGTH:
        frame[step.result] = std::sqrt(dotOf(a, a, step.n));
        break;
    case QSLOp::NORMALISE:
        normaliseAt(step, frame);
        break;
    case QSLOp::CROSS:
        crossAt(step, frame);
        break;
    case QSLOp::LERP: {
        const float t = frame[step.c];
        map2(step, frame, [t](float from, float to) { return from + t * (to - from); });
        break;
    }
    case QSLOp::MIN:
        map2(step, frame, [](float x, float y) { return std::min(x, y); });
        break;
    case QSLOp::MAX:
        map2(step, frame, [](float x, float y) { return std::max(x, y); });
        break;
    case QSLOp::CLAMP:
        each(step, frame, [&](unsigned i) { return clampBetween(a[i], b[i], frame[step.c + i]); });
        break;
    case QSLOp::ABS:
        map1(step, frame, [](float v) { return std::abs(v); });
        break;
    case QSLOp::FLOOR:
        map1(step, frame, [](float v) { return std::floor(v); });
        break;
    case QSLOp::CEIL:
        map1(step, frame, [](float v) { return std::ceil(v); });
        break;
    case QSLOp::FRACT:
        map1(step, frame, [](float v) { return v - std::floor(v); });
        break;
    case QSLOp::NOISE:
        frame[step.result] = perlinNoise(vectorAt(a, step.n));
        break;
    case QSLOp::NOISE01:
        frame[step.result] = 0.5f * (perlinNoise(vectorAt(a, step.n)) + 1);
        break;
    case QSLOp::FBM:
        frame[step.result] = fbmAt(step, frame);
        break;
    case QSLOp::FBM01:
        frame[step.result] = 0.5f * (fbmAt(step, frame) + 1);
        break;
    default:
        runFunction(step, frame);
        break;
    }
}

} // namespace

void runQSL(const QSLStep* steps, size_t count, float* frame, const QSLContext& context) {
    for (size_t i = 0; i < count; ++i) {
        const QSLStep& step = steps[i];
        switch (step.op) {
        case QSLOp::MOVE:
            map1(step, frame, [](float v) { return v; });
            break;
        case QSLOp::JUMP:
            i = size_t(step.a) - 1;
            break;
        case QSLOp::JUMP_UNLESS:
            i = frame[step.a] != 0 ? i : size_t(step.b) - 1;
            break;
        case QSLOp::NEGATE:
            map1(step, frame, [](float v) { return -v; });
            break;
        case QSLOp::ADD:
            map2(step, frame, [](float x, float y) { return x + y; });
            break;
        case QSLOp::SUBTRACT:
            map2(step, frame, [](float x, float y) { return x - y; });
            break;
        case QSLOp::MULTIPLY:
            map2(step, frame, [](float x, float y) { return x * y; });
            break;
        case QSLOp::DIVIDE:
            map2(step, frame, [](float x, float y) { return x / y; });
            break;
        case QSLOp::SCALE:
            map1(step, frame, [n = frame[step.b]](float v) { return v * n; });
            break;
        case QSLOp::SHRINK:
            map1(step, frame, [n = frame[step.b]](float v) { return v / n; });
            break;
        case QSLOp::TEX_COORDS:
            texCoordsAt(step, frame, context);
            break;
        case QSLOp::MIN_COS_THETA:
            frame[step.result] = std::abs(dot(context.point.ray_direction, context.point.shading_normal));
            break;
        case QSLOp::SAMPLE_TEXTURE:
            sampleAt(step, frame, context);
            break;
        default:
            runVector(step, frame);
            break;
        }
    }
}

} // namespace engine
