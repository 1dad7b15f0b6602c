// SPDX-License-Identifier: MIT
#include "host/ids.h"
#include "materials/material_fixture.h"
#include "materials/perlin_noise.h"
#include "materials/qsl_shader.h"
#include "materials/shader_text.h"

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

private:
    BaseMaterial* material_ = addMaterial("M");
};

void expectNear(const Vector& value, const Vector& expected, const char* what) {
    EXPECT_NEAR(value.x, expected.x, 1e-5f) << what;
    EXPECT_NEAR(value.y, expected.y, 1e-5f) << what;
    EXPECT_NEAR(value.z, expected.z, 1e-5f) << what;
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

TEST_F(QSLShaders, NumberTheImagesOfAProgram) {
    BaseShader* const program = add(PLUGINID_QSL_SHADER);
    data(program).SetString(QSL_CODE, "$tex01$ $tex02$ $tex03$ $tex01$ $tex04$");
    data(program).SetFilename(QSL_TEXTURE_1, Filename("a name as it stands.png"));
    data(program).SetFilename(QSL_TEXTURE_3, Filename("/c.png"));
    Quenza::Vector<Quenza::Texture> textures(3);
    const auto info = makeShaderInfo(program, textures, "not used", QSL_VEC3);
    EXPECT_EQ(info->shader, Quenza::String("3 $tex02$ 4 3 $tex04$"));
    ASSERT_EQ(textures.size(), 5u);
    EXPECT_EQ(textures[3].path, Quenza::String("a name as it stands.png"));
    EXPECT_EQ(textures[4].path, Quenza::String("/c.png"));

    data(program).RemoveData(QSL_CODE);
    EXPECT_EQ(makeShaderInfo(program, textures, "", QSL_VEC3)->shader, Quenza::String("no shader"));
}

} // namespace
