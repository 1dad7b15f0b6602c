// SPDX-License-Identifier: MIT
#include "host/ids.h"
#include "materials/material_fixture.h"
#include "materials/perlin_noise.h"
#include "materials/qsl_shader.h"

#include <utility>

namespace {

class QSLShaders : public MaterialTest {
protected:
    BaseShader* add(int32_t type) { return addShader(material_, MAT_ALBEDO_SHADER, type); }
    static std::string text(BaseShader* shader, int32_t valueType) {
        return findQSLShader(shader)->getQSLExpression(shader, valueType).GetUtf8();
    }
    /// The value at texture coordinates.
    Vector sample(BaseShader* shader, const Vector& uvw, const VolumeData* volume = nullptr) {
        EXPECT_EQ(shader->InitRender({document(), BaseTime()}), INITRENDERRESULT_OK);
        ChannelData place;
        place.p = uvw;
        place.volume = volume;
        const Vector value = shader->Sample(place);
        shader->FreeRender();
        return value;
    }
    BaseMaterial* material() { return material_; }

private:
    BaseMaterial* material_ = addMaterial("M");
};

void expectNear(const Vector& value, const Vector& expected, const char* what) {
    EXPECT_NEAR(value.x, expected.x, 1e-5f) << what;
    EXPECT_NEAR(value.y, expected.y, 1e-5f) << what;
    EXPECT_NEAR(value.z, expected.z, 1e-5f) << what;
}

const char* const WHITE_TO_BLACK = "vec3(1.00000, 1.00000, 1.00000), vec3(0.00000, 0.00000, 0.00000)";

TEST_F(QSLShaders, WriteNoise) {
    const struct {
        std::vector<std::pair<int32_t, int32_t>> settings;
        const char* vec3;
        const char* real;
    } cases[] = {
        {{},
         "(lerp(COLOURS, noise01(mulCompVec2(getTexCoords(0) * 10.0, vec2(0.50000, 2.00000)))) * 0.25000)",
         "(Vec3ToReal(lerp(COLOURS, noise01(mulCompVec2(getTexCoords(0) * 10.0, vec2(0.50000, 2.00000))))) * "
         "0.25000)"},
        {{{QSLNOISE_TYPE, QSLNOISE_TYPE_FBM}},
         "(lerp(COLOURS, fbm01(mulCompVec2(getTexCoords(0) * 10.0, vec2(0.50000, 2.00000)),8)) * 0.25000)",
         "(Vec3ToReal(lerp(COLOURS, fbm01(mulCompVec2(getTexCoords(0) * 10.0, vec2(0.50000, 2.00000)),8))) * "
         "0.25000)"},
        {{{QSLNOISE_MAPPING, QSLNOISE_MAPPING_POSITION}},
         "(lerp(COLOURS, noise01(mulCompVec3(pos, vec3(0.50000, 3.00000, 2.00000)))) * 0.25000)",
         "(Vec3ToReal(lerp(COLOURS, noise01(mulCompVec3(pos, vec3(0.50000, 3.00000, 2.00000))))) * 0.25000)"},
        {{{QSLNOISE_OUTPUT, QSLNOISE_OUTPUT_PLAIN}},
         "(vec3(noise(mulCompVec2(getTexCoords(0) * 10.0, vec2(0.50000, 2.00000)))) * 0.25000)",
         "(noise(mulCompVec2(getTexCoords(0) * 10.0, vec2(0.50000, 2.00000))) * 0.25000)"},
        {{{QSLNOISE_OUTPUT, 0},
          {QSLNOISE_TYPE, QSLNOISE_TYPE_FBM},
          {QSLNOISE_MAPPING, QSLNOISE_MAPPING_POSITION}},
         "(vec3(fbm(mulCompVec3(pos, vec3(0.50000, 3.00000, 2.00000)),8)) * 0.25000)",
         "(fbm(mulCompVec3(pos, vec3(0.50000, 3.00000, 2.00000)),8) * 0.25000)"},
    };
    const auto expected = [](const char* pattern) {
        std::string written = pattern;
        const size_t place = written.find("COLOURS");
        return place == std::string::npos ? written : written.replace(place, 7, WHITE_TO_BLACK);
    };
    for (const auto& test : cases) {
        BaseShader* const noise = add(PLUGINID_QSL_NOISE);
        data(noise).SetVector(QSLNOISE_SCALE, Vector(0.5f, 2.0f, 3.0f));
        data(noise).SetReal(QSLNOISE_AMPLITUDE, 0.25f);
        for (const auto& [id, value] : test.settings) {
            data(noise).SetLong(id, value);
        }
        EXPECT_EQ(text(noise, QSL_VEC3), expected(test.vec3));
        EXPECT_EQ(text(noise, QSL_REAL), expected(test.real));
    }
}

TEST_F(QSLShaders, WriteGradientAndNormal) {
    BaseShader* const gradient = add(PLUGINID_QSL_GRADIENT);
    const std::string lerp = std::string("lerp(") + WHITE_TO_BLACK;
    const std::pair<int32_t, const char*> directions[] = {
        {QSLGRADIENT_U, ", doti(getTexCoords(0)))"},
        {QSLGRADIENT_V, ", dotj(getTexCoords(0)))"},
        {QSLGRADIENT_RADIAL, ", length(vec2(0.5,0.5) - getTexCoords(0)) * 2.0 )"},
        {99, ", doti(getTexCoords(0)))"},
    };
    for (const auto& [direction, end] : directions) {
        data(gradient).SetLong(QSLGRADIENT_DIRECTION, direction);
        EXPECT_EQ(text(gradient, QSL_VEC3), lerp + end + " * 1.00000");
        EXPECT_EQ(text(gradient, QSL_REAL), "Vec3ToReal(" + lerp + end + ") * 1.00000");
    }
    BaseShader* const normal = add(PLUGINID_QSL_NORMAL);
    data(normal).SetVector(QSLNORMAL_COLOUR_1, Vector(-0.1f, 12345.678f, 0.000004f));
    EXPECT_EQ(text(normal, QSL_VEC3), "lerp(vec3(-0.10000, 12345.67773, 0.00000), vec3(0.00000, 0.00000, "
                                      "0.00000), minCosTheta())");
    EXPECT_EQ(text(normal, QSL_REAL), "Vec3ToReal(lerp(vec3(-0.10000, 12345.67773, 0.00000), vec3(0.00000, "
                                      "0.00000, 0.00000), minCosTheta()))");
}

TEST_F(QSLShaders, WriteBlends) {
    BaseShader* const blend = add(PLUGINID_QSL_BLEND);
    EXPECT_EQ(text(blend, QSL_VEC3), "mulCompVec3(vec3(1.0), vec3(1.0)) * 1.00000");
    EXPECT_EQ(text(blend, QSL_REAL), "(1.0 * 1.0) * 1.00000");

    BaseShader* const normal = add(PLUGINID_QSL_NORMAL);
    data(blend).SetLink(QSLBLEND_A, normal);
    data(blend).SetLink(QSLBLEND_B, add(Xbitmap)); // Of the host: it counts as empty.
    data(blend).SetReal(QSLBLEND_MULTIPLIER, 0.5f);
    const std::string vec3 = text(normal, QSL_VEC3);
    const std::string real = text(normal, QSL_REAL);
    const struct {
        int32_t operation;
        std::string vec3;
        std::string real;
    } cases[] = {
        {QSLBLEND_ADD, vec3 + " + vec3(1.0) * 0.50000", "(" + real + " + 1.0) * 0.50000"},
        {QSLBLEND_SUBTRACT, vec3 + " - vec3(1.0) * 0.50000", "(" + real + " - 1.0) * 0.50000"},
        {QSLBLEND_MULTIPLY, "mulCompVec3(" + vec3 + ", vec3(1.0)) * 0.50000",
         "(" + real + " * 1.0) * 0.50000"},
        {0, vec3 + " + vec3(1.0) * 0.50000", "(" + real + " + 1.0) * 0.50000"},
    };
    for (const auto& test : cases) {
        data(blend).SetLong(QSLBLEND_OPERATION, test.operation);
        EXPECT_EQ(text(blend, QSL_VEC3), test.vec3);
        EXPECT_EQ(text(blend, QSL_REAL), test.real);
    }
    BaseShader* const outer = add(PLUGINID_QSL_BLEND);
    data(outer).SetLink(QSLBLEND_B, blend);
    EXPECT_EQ(text(outer, QSL_REAL), "(1.0 * (" + real + " + 1.0) * 0.50000) * 1.00000");
}

TEST_F(QSLShaders, EndWhereBlendsLeadRoundOrGoOnForEver) {
    BaseShader* const first = add(PLUGINID_QSL_BLEND);
    BaseShader* const second = add(PLUGINID_QSL_BLEND);
    data(first).SetLink(QSLBLEND_A, second);
    data(second).SetLink(QSLBLEND_A, first);
    EXPECT_EQ(text(first, QSL_REAL), "((1.0 * 1.0) * 1.00000 * 1.0) * 1.00000");
    expectNear(sample(first, {}), {1, 1, 1}, "cycle");
    EXPECT_TRUE(first->Message(MSG_UPDATE));

    // Both links of each lead to the next: 2 to the power of 100 ends.
    BaseShader* below = add(PLUGINID_QSL_NORMAL);
    for (int i = 0; i < 100; ++i) {
        BaseShader* const blend = add(PLUGINID_QSL_BLEND);
        data(blend).SetLink(QSLBLEND_A, below);
        data(blend).SetLink(QSLBLEND_B, below);
        below = blend;
    }
    EXPECT_LT(text(below, QSL_VEC3).size(), 1000000u);
    expectNear(sample(below, {}), {1, 1, 1}, "shared");
    EXPECT_TRUE(below->Message(MSG_UPDATE));

    // A chain far deeper than the stack.
    for (int i = 0; i < 20000; ++i) {
        BaseShader* const blend = add(PLUGINID_QSL_BLEND);
        data(blend).SetLink(QSLBLEND_B, below);
        below = blend;
    }
    EXPECT_LT(text(below, QSL_REAL).size(), 1000000u);
    expectNear(sample(below, {}), {1, 1, 1}, "chain");
    EXPECT_TRUE(below->Message(MSG_UPDATE));
}

TEST_F(QSLShaders, TextOfATreeGrowsWithIt) {
    size_t sizes[2];
    for (size_t i = 0; i < 2; ++i) {
        BaseShader* chain = add(PLUGINID_QSL_NORMAL);
        for (size_t n = 0; n < 50 * (i + 1); ++n) {
            BaseShader* const blend = add(PLUGINID_QSL_BLEND);
            data(blend).SetLink(QSLBLEND_A, chain);
            data(blend).SetLink(QSLBLEND_B, add(PLUGINID_QSL_NORMAL));
            chain = blend;
        }
        sizes[i] = text(chain, QSL_VEC3).size();
    }
    EXPECT_LT(sizes[1], 2 * sizes[0]);
}

TEST_F(QSLShaders, ShowGradientsInTheHost) {
    BaseShader* const gradient = add(PLUGINID_QSL_GRADIENT);
    data(gradient).SetVector(QSLGRADIENT_COLOUR_1, Vector(1, 0, 0));
    data(gradient).SetVector(QSLGRADIENT_COLOUR_2, Vector(0, 1, 0.5f));
    data(gradient).SetReal(QSLGRADIENT_MULTIPLIER, 2.0f);
    const Vector place(0.25f, 0.9f, 0.0f);
    expectNear(sample(gradient, place), {1.5f, 0.5f, 0.25f}, "u");
    data(gradient).SetLong(QSLGRADIENT_DIRECTION, QSLGRADIENT_V);
    expectNear(sample(gradient, place), {0.2f, 1.8f, 0.9f}, "v");
    data(gradient).SetLong(QSLGRADIENT_DIRECTION, QSLGRADIENT_RADIAL);
    // 2 * sqrt(0.3 squared + 0.4 squared) = 1.
    expectNear(sample(gradient, {0.2f, 0.9f, 0.0f}), {0.0f, 2.0f, 1.0f}, "radial");
    expectNear(sample(gradient, {0.5f, 0.5f, 0.25f}), {1.0f, 1.0f, 0.5f}, "radial, from w");
}

TEST_F(QSLShaders, ShowNoiseInTheHost) {
    BaseShader* const noise = add(PLUGINID_QSL_NOISE);
    data(noise).SetVector(QSLNOISE_SCALE, Vector(0.5f, 2.0f, 3.0f));
    data(noise).SetReal(QSLNOISE_AMPLITUDE, 2.0f);
    data(noise).SetLong(QSLNOISE_OUTPUT, QSLNOISE_OUTPUT_PLAIN);
    // u * 10 * 0.5 and (1 - v) * 10 * 2 make (0.25, 0, 0).
    expectNear(sample(noise, {0.05f, 1.0f, 0.0f}), Vector(1, 1, 1) * 0.29296875f, "plain");
    data(noise).SetLong(QSLNOISE_OUTPUT, QSLNOISE_OUTPUT_COLOUR);
    data(noise).SetVector(QSLNOISE_COLOUR_1, Vector(1, 0, 0));
    data(noise).SetVector(QSLNOISE_COLOUR_2, Vector(0, 1, 0));
    expectNear(sample(noise, {0.05f, 1.0f, 0.0f}), {0.853515625f, 1.146484375f, 0.0f}, "coloured");
    data(noise).SetLong(QSLNOISE_OUTPUT, QSLNOISE_OUTPUT_PLAIN);
    data(noise).SetLong(QSLNOISE_TYPE, QSLNOISE_TYPE_FBM);
    expectNear(sample(noise, {0.05f, 1.0f, 0.0f}), Vector(1, 1, 1) * (2 * 0.15469219f), "fbm");

    // In space the scene's axes count: the host's Y is the scene's Z. The unit is a metre.
    data(noise).SetLong(QSLNOISE_TYPE, QSLNOISE_TYPE_NOISE);
    data(noise).SetLong(QSLNOISE_MAPPING, QSLNOISE_MAPPING_POSITION);
    VolumeData volume;
    volume.p = Vector(0.3f, 0.4f, 0.7f);
    const auto expected = static_cast<float>(2.0 * perlinNoise({0.15, 2.1, 0.8}));
    expectNear(sample(noise, {}, &volume), {expected, expected, expected}, "position");
}

TEST_F(QSLShaders, ShowNormalsAndBlendsInTheHost) {
    BaseShader* const normal = add(PLUGINID_QSL_NORMAL);
    data(normal).SetVector(QSLNORMAL_COLOUR_1, Vector(1, 0, 0.5f));
    data(normal).SetVector(QSLNORMAL_COLOUR_2, Vector(0, 1, 0.5f));
    ShadingRay ray;
    ray.v = Vector(0.6f, 0.0f, -0.8f);
    VolumeData volume;
    volume.n = Vector(0, 0, 1);
    volume.ray = &ray;
    expectNear(sample(normal, {}, &volume), {0.2f, 0.8f, 0.5f}, "normal");
    expectNear(sample(normal, {}), {1.0f, 0.0f, 0.5f}, "without a ray");

    BaseShader* const blend = add(PLUGINID_QSL_BLEND);
    BaseShader* const gradient = add(PLUGINID_QSL_GRADIENT);
    data(blend).SetLink(QSLBLEND_A, gradient);
    data(blend).SetLink(QSLBLEND_B, normal);
    data(blend).SetReal(QSLBLEND_MULTIPLIER, 2.0f);
    const Vector place(0.25f, 0, 0);
    expectNear(sample(blend, place, &volume), {0.3f, 1.2f, 0.75f}, "multiply");
    data(blend).SetLong(QSLBLEND_OPERATION, QSLBLEND_ADD);
    expectNear(sample(blend, place, &volume), {1.9f, 3.1f, 2.5f}, "add");
    data(blend).SetLong(QSLBLEND_OPERATION, QSLBLEND_SUBTRACT);
    expectNear(sample(blend, place, &volume), {1.1f, -0.1f, 0.5f}, "subtract");
    data(blend).SetLink(QSLBLEND_B, nullptr);
    expectNear(sample(blend, place), Vector(1, 1, 1) * -0.5f, "an empty link is white");
}

/// "default" gives way to a program that fits the channel at the first message inside a material.
TEST_F(QSLShaders, ProgramsFitTheirChannel) {
    const std::pair<int32_t, const char*> cases[] = {
        {MAT_ALBEDO_SHADER, "def eval(vec3 pos) vec3:\n\tvec3(0.8)"},
        {MAT_EMISSION_SHADER, "def eval(vec3 pos) vec3:\n\tvec3(0.8)"},
        {MAT_ABSORPTION_LAYER_SHADER, "def eval(vec3 pos) vec3:\n\tvec3(0.8)"},
        {10016, "def eval(vec3 pos) vec3:\n\tvec3(0.8)"},
        {16016, "def eval(vec3 pos) vec3:\n\tvec3(0.8)"},
        {MAT_EXPONENT_SHADER, "def eval(vec3 pos) real:\n\t1.0"},
        {MAT_SIGMA_SHADER, "def eval(vec3 pos) real:\n\t1.0"},
        {11016, "def eval(vec3 pos) real:\n\t1.0"},
        {12016, "def eval(vec3 pos) real:\n\t1.0"},
        {13016, "def eval(vec3 pos) real:\n\t1.0"},
        {14016, "def eval(vec3 pos) real:\n\t1.0"},
        {15016, "def eval(vec3 pos) real:\n\t1.0"},
        {17016, "def eval(vec3 pos) real:\n\t1.0"},
        {MAT_DISPLACEMENT_SHADER, "def eval() real:\n\t0.0"},
        {MAT_BUMP_SHADER, "def eval() real:\n\t0.0"},
        {MAT_BLEND_SHADER, "def eval() real:\n\t0.0"},
        {MAT_NORMAL_MAP_SHADER, "def eval(vec3 pos) vec3 :\n\tvec3(0.0, 0.0, 1.0)"},
    };
    for (const auto& [link, program] : cases) {
        BaseMaterial* const owner = addMaterial("M");
        BaseShader* const shader = addShader(owner, link, PLUGINID_QSL_SHADER);
        EXPECT_EQ(data(shader).GetString(QSL_CODE), "default");
        // The material passes its own messages on.
        EXPECT_TRUE(owner->Message(MSG_UPDATE));
        EXPECT_EQ(data(shader).GetString(QSL_CODE), program) << link;
        data(shader).SetString(QSL_CODE, "my own");
        owner->Message(MSG_UPDATE);
        EXPECT_EQ(data(shader).GetString(QSL_CODE), "my own") << link;
    }
}

TEST_F(QSLShaders, ProgramsElsewhereStayOrSayThatTheyDontFit) {
    BaseShader* outside = BaseShader::Alloc(PLUGINID_QSL_SHADER);
    outside->Message(MSG_UPDATE);
    EXPECT_EQ(data(outside).GetString(QSL_CODE), "default");
    BaseShader::Free(outside);

    BaseShader* const ofHost =
        addShader(addOtherMaterial("H", Mmaterial), MATERIAL_COLOR_SHADER, PLUGINID_QSL_SHADER);
    ofHost->Message(MSG_UPDATE);
    EXPECT_EQ(data(ofHost).GetString(QSL_CODE), "default");

    BaseShader* const blended = BaseShader::Alloc(PLUGINID_QSL_SHADER);
    material()->InsertShader(blended);
    BaseShader* const inner = add(PLUGINID_QSL_BLEND);
    BaseShader* const outer = add(PLUGINID_QSL_BLEND);
    data(outer).SetLink(QSLBLEND_A, inner);
    data(inner).SetLink(QSLBLEND_B, blended);
    material()->Message(MSG_UPDATE);
    EXPECT_EQ(data(blended).GetString(QSL_CODE), "unhandled channel");
}

TEST_F(QSLShaders, AreKnownByTheirTypes) {
    const struct {
        int32_t type;
        bool isKnown;
        bool isExpression;
    } cases[] = {{PLUGINID_QSL_NOISE, true, true},    {PLUGINID_QSL_BLEND, true, true},
                 {PLUGINID_QSL_GRADIENT, true, true}, {PLUGINID_QSL_NORMAL, true, true},
                 {PLUGINID_QSL_SHADER, true, false},  {Xbitmap, false, false}};
    for (const auto& [type, isKnown, isExpression] : cases) {
        const BaseShader* const shader = add(type);
        EXPECT_EQ(isKnownShader(shader), isKnown) << type;
        EXPECT_EQ(findQSLShader(shader) != nullptr, isExpression) << type;
    }
    EXPECT_FALSE(isKnownShader(nullptr));
    EXPECT_EQ(findQSLShader(nullptr), nullptr);
}

} // namespace
