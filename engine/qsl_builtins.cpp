// SPDX-License-Identifier: MIT
#include "engine/qsl_builtins.h"

namespace engine {

namespace {

constexpr QSLType REAL = QSLType::REAL;
constexpr QSLType INT = QSLType::INT;
constexpr QSLType VEC2 = QSLType::VEC2;
constexpr QSLType VEC3 = QSLType::VEC3;

/// A row of arguments of one type.
struct Row {
    std::string_view name;
    unsigned arguments;
    QSLOp op;
};

/// Functions of real numbers.
constexpr Row OF_REALS[] = {
    {"mod", 2, QSLOp::MOD},   {"step", 2, QSLOp::STEP},  {"smoothstep", 3, QSLOp::SMOOTHSTEP},
    {"pow", 2, QSLOp::POW},   {"exp", 1, QSLOp::EXP},    {"log", 1, QSLOp::LOG},
    {"sqrt", 1, QSLOp::SQRT}, {"sin", 1, QSLOp::SIN},    {"cos", 1, QSLOp::COS},
    {"tan", 1, QSLOp::TAN},   {"asin", 1, QSLOp::ASIN},  {"acos", 1, QSLOp::ACOS},
    {"atan", 1, QSLOp::ATAN}, {"atan2", 2, QSLOp::ATAN2}};
/// Functions that take each component by itself.
constexpr Row BY_COMPONENT[] = {
    {"min", 2, QSLOp::MIN},     {"max", 2, QSLOp::MAX},   {"clamp", 3, QSLOp::CLAMP}, {"abs", 1, QSLOp::ABS},
    {"floor", 1, QSLOp::FLOOR}, {"ceil", 1, QSLOp::CEIL}, {"fract", 1, QSLOp::FRACT}};
/// Functions of whole numbers that give whole numbers.
constexpr Row OF_INTS[] = {{"min", 2, QSLOp::MIN},
                           {"max", 2, QSLOp::MAX},
                           {"clamp", 3, QSLOp::CLAMP},
                           {"abs", 1, QSLOp::ABS},
                           {"mod", 2, QSLOp::MOD_INT}};

std::vector<QSLBuiltin> makeBuiltins() {
    std::vector<QSLBuiltin> all = {
        {"vec2", {REAL, REAL}, VEC2, QSLOp::PACK, 2},
        {"vec2", {REAL}, VEC2, QSLOp::SPREAD, 2},
        {"vec3", {REAL, REAL, REAL}, VEC3, QSLOp::PACK, 3},
        {"vec3", {REAL}, VEC3, QSLOp::SPREAD, 3},
        {"real", {REAL}, REAL, QSLOp::MOVE, 1},
        {"int", {REAL}, INT, QSLOp::TRUNCATE, 1},
        {"dotk", {VEC3}, REAL, QSLOp::PICK_Z, 1},
        {"cross", {VEC3, VEC3}, VEC3, QSLOp::CROSS, 3},
        {"minCosTheta", {}, REAL, QSLOp::MIN_COS_THETA, 1, true},
        {"getTexCoords", {INT}, VEC2, QSLOp::TEX_COORDS, 2, true},
        {"sample2DTextureVec3", {INT, VEC2}, VEC3, QSLOp::SAMPLE_TEXTURE, 3, true},
    };
    for (const QSLType type : {REAL, VEC2, VEC3}) {
        const auto n = std::uint8_t(sizeOf(type));
        all.push_back({"lerp", {type, type, REAL}, type, QSLOp::LERP, n});
        all.push_back({"noise", {type}, REAL, QSLOp::NOISE, n});
        all.push_back({"noise01", {type}, REAL, QSLOp::NOISE01, n});
        all.push_back({"fbm", {type, INT}, REAL, QSLOp::FBM, n});
        all.push_back({"fbm01", {type, INT}, REAL, QSLOp::FBM01, n});
        for (const Row& row : BY_COMPONENT) {
            all.push_back({row.name, std::vector<QSLType>(row.arguments, type), type, row.op, n});
        }
        if (type != REAL) {
            all.push_back({"doti", {type}, REAL, QSLOp::PICK_X, 1});
            all.push_back({"dotj", {type}, REAL, QSLOp::PICK_Y, 1});
            all.push_back({"dot", {type, type}, REAL, QSLOp::DOT, n});
            all.push_back({"length", {type}, REAL, QSLOp::LENGTH, n});
            all.push_back({"normalise", {type}, type, QSLOp::NORMALISE, n});
        }
    }
    for (const Row& row : OF_REALS) {
        all.push_back({row.name, std::vector<QSLType>(row.arguments, REAL), REAL, row.op, 1});
    }
    for (const Row& row : OF_INTS) {
        all.push_back({row.name, std::vector<QSLType>(row.arguments, INT), INT, row.op, 1});
    }
    return all;
}

} // namespace

const std::vector<QSLBuiltin>& qslBuiltins() {
    static const std::vector<QSLBuiltin> all = makeBuiltins();
    return all;
}

} // namespace engine
