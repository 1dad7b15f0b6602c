// SPDX-License-Identifier: MIT
#include "engine/qsl_program.h"
#include "engine/surface_point.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>

namespace {

using namespace engine;

constexpr QSLEntry COLOUR{true, QSLType::VEC3};
constexpr QSLEntry NUMBER{true, QSLType::REAL};
constexpr QSLEntry HEIGHT{false, QSLType::REAL};

/// The point at (0.25, 0.75) of a panorama, which is seen by a slanting ray.
SurfacePoint samplePoint() {
    SurfacePoint point;
    const float z = std::sqrt(0.5f);
    point.position = {-z, 0, z};
    point.shading_normal = point.normal = {0, 0, 1};
    point.ray_direction = {0.8f, 0, -0.6f};
    return point;
}

std::string faultOf(const std::vector<QSLText>& texts, const QSLEntry& entry) {
    try {
        const QSLProgram program(texts, entry, {});
        return "it compiles";
    } catch (const QSLFault& fault) {
        return (fault.place.text == 0 ? "" : "text " + std::to_string(fault.place.text) + ", ") +
               std::to_string(fault.place.line) + ":" + std::to_string(fault.place.column) + " " +
               fault.reason;
    }
}

std::string repeated(const std::string& text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

double numberOf(const std::string& expression) {
    const QSLProgram program({{"", "def eval(vec3 pos) real : " + expression}}, NUMBER, {});
    return double(program.at(samplePoint()).x);
}

TEST(QSL, ExpressionsGiveTheirValues) {
    struct Row {
        const char* expression;
        double value;
    };
    const Row rows[] = {
        {"1 + 2 * 3", 7},
        {"(1 + 2) * 3", 9},
        {"10 - 4 - 3", 3},
        {"7 / 2", 3},
        {"-7 / 2", -3},
        {"7 / 2.0", 3.5},
        {"1 / 0", 0},
        {"1.0 / 0.0", 0},
        {"log(-1.0)", 0},
        {"- - 2", 2},
        {".5 + 1e-1 + 2.", 2.6},
        {"mod(-1, 3)", 2},
        {"mod(5.5, 2.0)", 1.5},
        {"int(-2.7) + 0.5", -1.5},
        {"if(1 < 2 && !(2 <= 1) || false, 4, 0.5)", 4},
        {"if(doti(pos) > 0.0, 1.0, if(dotk(pos) >= 0.5, 2.0, 3.0))", 2},
        {"if(doti(pos) != dotj(pos), 1.0, 0.0) + if(vec2(1.0) == vec2(1.0, 1.0), 10, 20)", 11},
        {"dot(vec3(1.0, 2.0, 3.0), vec3(4.0, 5.0, 6.0))", 32},
        {"dotk(cross(vec3(1.0, 0.0, 0.0), vec3(0.0, 1.0, 0.0)))", 1},
        {"length(vec3(2.0, 3.0, 6.0)) + length(vec2(3.0, 4.0))", 12},
        {"doti(normalise(vec2(3.0, 4.0))) + doti(normalise(vec3(0.0)))", 0.6},
        {"dotj(2.0 * vec2(1.0, 3.0) - vec2(1.0) / 2.0)", 5.5},
        {"dotk(-vec3(3) * 2)", -6},
        {"lerp(2.0, 4.0, 1.5)", 5},
        {"dotj(lerp(vec3(0.0), vec3(1.0, 2.0, 3.0), 0.25))", 0.5},
        {"clamp(5, 0, 3) + min(1.5, 1) + dotj(max(vec2(1.0, 2.0), vec2(3.0, 0.0)))", 6},
        {"step(0.5, 0.5) + smoothstep(0.0, 2.0, 0.5)", 1.15625},
        {"floor(-1.5) + ceil(1.2) + fract(2.25) + abs(-3)", 3.25},
        {"pow(2, 10) + sqrt(16.0) + exp(0.0) + log(exp(2.0))", 1031},
        {"sin(0.5) * sin(0.5) + cos(0.5) * cos(0.5) + tan(0.0)", 1},
        {"asin(1.0) + acos(1.0) + atan(0.0) + atan2(1.0, 0.0)", 3.14159265},
        {"doti(getTexCoords(0))", 0.25},
        {"dotj(getTexCoords(0)) + doti(pos)", 0.75 - std::sqrt(0.5)},
        {"minCosTheta()", 0.6},
    };
    for (const Row& row : rows) {
        EXPECT_NEAR(numberOf(row.expression), row.value, 1e-5) << row.expression;
    }
}

/// By hand from the published table: the eight corners about (0.5, 0.5, 0.5) hash to 36, 103, 108, 110, 86,
/// 164, 128 and 195, whose gradients give 1, 0, 0, -1, -1, -1, -1 and 1 there, of which the mean is -0.25.
TEST(QSL, NoiseAgreesWithThePublishedTable) {
    EXPECT_NEAR(numberOf("noise(vec3(0.5, 0.5, 0.5))"), -0.25, 1e-6);
    EXPECT_NEAR(numberOf("noise(vec3(3.14, 42.0, 7.0))"), 0.1369199587840001, 1e-5);
    EXPECT_NEAR(numberOf("noise(vec3(-1.3, 2.6, -0.2))"), -0.003844982348, 1e-6);
    EXPECT_NEAR(numberOf("noise(vec2(0.25, 0.75))"), -0.07763671875, 1e-6);
    EXPECT_NEAR(numberOf("noise(getTexCoords(0))"), -0.07763671875, 1e-6) << "the same, in the render";
    EXPECT_NEAR(numberOf("noise01(vec2(0.25, 0.75))"), 0.461181640625, 1e-6);
    EXPECT_NEAR(numberOf("fbm(0.5, 2)"), -0.002499379678, 1e-6);
    EXPECT_NEAR(numberOf("fbm(vec3(0.5), 8)"), -0.247691412347, 1e-5);
    EXPECT_NEAR(numberOf("fbm01(vec2(0.25, 0.75), 8)"), (1 + 0.048146929423) / 2, 1e-5);
    EXPECT_EQ(numberOf("noise(1e30) + noise(pos * 1e20) + noise(0.0 / 0.0)"), 0);
}

TEST(QSL, FaultsNameTheirPlace) {
    struct Row {
        QSLEntry entry;
        std::string text;
        const char* fault;
    };
    const Row rows[] = {
        {COLOUR, "no shader", "1:1 'def' is expected, not 'no'"},
        {COLOUR, "", "1:1 The function 'eval(vec3) vec3' is missing"},
        {COLOUR, "def eval(vec3 pos) vec3: Vector(1.0)", "1:26 There is no function 'Vector'"},
        {COLOUR, "def eval(vec3 pos) real: 1.0", "1:5 The function 'eval(vec3) vec3' is missing"},
        {NUMBER, "def eval() real: 1.0", "1:5 The function 'eval(vec3) real' is missing"},
        {HEIGHT, "def eval() real: noise(pos)", "1:24 'pos' is not known here"},
        {COLOUR, "def eval(vec3 pos) vec3:\n\tvec3(1.0,\n\t  pos, 2)",
         "2:2 There is no 'vec3(real, vec3, int)'"},
        {COLOUR, "def eval(vec3 pos) vec3: 1.0", "1:26 'eval' is to give vec3, not real"},
        {COLOUR, "def eval(vec3 pos) vec3: pos * pos", "1:30 '*' doesn't join vec3 and vec3"},
        {NUMBER, "def eval(vec3 pos) real: !1.0", "1:26 '!' takes no real"},
        {NUMBER, "def eval(vec3 pos) real: -true", "1:26 '-' takes no bool"},
        {NUMBER, "def eval(vec3 pos) real: if(1, 2, 3)", "1:26 'if' takes a bool first, not int"},
        {NUMBER, "def eval(vec3 pos) real: if(true, 2)", "1:26 'if' takes a condition and two values"},
        {NUMBER, "def eval(vec3 pos) real: if(true, 2, pos)",
         "1:26 'if' takes two values of one type, not int and vec3"},
        {NUMBER, "def eval(vec3 pos) real: (1.0", "1:30 ')' is expected, not the end"},
        {NUMBER, "def eval(vec3 pos) real: 1.0 +", "1:31 An expression is expected, not the end"},
        {NUMBER, "def eval(vec3 pos) real: max(1,)", "1:32 An expression is expected, not ')'"},
        {NUMBER, "def eval(float x) real: 1",
         "1:10 A type (real, int, bool, vec2 or vec3) is expected, not 'float'"},
        {NUMBER, "def eval(vec3 pos) real: 1.0f", "1:26 '1.0f' is no number"},
        {NUMBER, "def eval(vec3 pos) real: 1e99", "1:26 '1e99' is out of range"},
        {NUMBER, "def eval(vec3 pos) real: 99999999", "1:26 '99999999' is out of range"},
        {NUMBER, "def eval(vec3 pos) real: \"\xC3\xA9\" $tex01$", "1:26 '\"' is not expected"},
        {NUMBER, "# \xC3\xA9\xC3\xA9\n  \xC3\xA9", "2:3 '\xC3\xA9' is not expected"},
        {NUMBER, std::string("def eval(vec3 pos) real: \0", 26), "1:26 A control character is not expected"},
        {NUMBER, "def real(vec3 pos) real: 1", "1:5 The name of a function is expected, not 'real'"},
        {NUMBER, "def f(int a) int: a def f(int b) real: 1 def eval(vec3 pos) real: f(1)",
         "1:25 'f(int)' is defined twice"},
        {NUMBER, "def eval(vec3 p, vec3 p) real: 1", "1:5 Two arguments of 'eval' are called 'p'"},
        {NUMBER, "def eval(vec3 pos) real: eval(pos)", "1:5 'eval' calls itself, or a function that does"},
        {NUMBER, "def a() real: b() def b() real: 1.0 + a() def eval(vec3 pos) real: 1.0",
         "1:5 'a' calls itself, or a function that does"},
        {NUMBER, "def unused() real: x def eval(vec3 pos) real: 1.0", "1:20 'x' is not known here"},
        {COLOUR, "def eval(vec3 pos) vec3: sample2DTextureVec3(1, getTexCoords(0))",
         "1:26 The material has no texture 1"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(faultOf({{"", row.text}}, row.entry), row.fault) << row.text;
    }
    EXPECT_EQ(faultOf({{"", "def f() real: 1.0"}, {"", "def eval() real: f() +\n g()"}}, HEIGHT),
              "text 1, 2:2 There is no function 'g'");
}

TEST(QSL, HostileTextsEndInAFault) {
    std::string doubling = "def f0(real x) real: x + 1.0 def c0() real: 1.0 ";
    for (int i = 1; i < 60; ++i) {
        const std::string before = std::to_string(i - 1), now = std::to_string(i);
        doubling += "def f" + now + "(real x) real: f" + before + "(x) * f" + before + "(x) ";
        doubling += "def c" + now + "() real: c" + before + "() * c" + before + "() ";
    }
    std::string chain = "def f0() real: 1.0 ";
    for (int i = 1; i < 400; ++i) {
        chain += "def f" + std::to_string(i) + "() real: 1.0 - (1.0 - f" + std::to_string(i - 1) + "()) ";
    }
    const std::string head = "def eval() real: ";
    struct Row {
        std::string text, reason;
    };
    const Row rows[] = {
        {head + repeated("(", 100000), "The expression is nested too deeply"},
        {head + repeated("-", 100000) + "1", "The expression is nested too deeply"},
        {head + repeated("1 + (", 240) + "1" + repeated(")", 240), "it compiles"},
        {head + "1" + repeated(" + 1", 20000), "it compiles"},
        {head + "minCosTheta()" + repeated(" + minCosTheta()", 20000), "The program is too large"},
        {head + "minCosTheta()" + repeated(" + fbm(minCosTheta(), 8)", 3000), "The program is too large"},
        {doubling + head + "f59(minCosTheta())", "The program is too large"},
        {doubling + head + "c59()", "The program is too large"},
        {chain + head + "f399()", "The expression is nested too deeply"},
        {head + "max(" + repeated("1,", 100) + "1)", "There are more than 32 arguments"},
        {repeated("def f(real x) real: x ", 20000), "'f(real)' is defined twice"},
        {repeated("# a comment\n", 100000), "The program is longer than 1048576 bytes"},
    };
    for (const Row& row : rows) {
        const std::string fault = faultOf({{"", row.text}}, HEIGHT);
        EXPECT_TRUE(fault.find(row.reason) != std::string::npos) << row.text.substr(0, 60) << ": " << fault;
    }
}

} // namespace
