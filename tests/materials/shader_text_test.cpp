// SPDX-License-Identifier: MIT
#include "materials/channels.h"
#include "materials/material_fixture.h"
#include "materials/shader_text.h"

namespace {

using Quenza::String;
using Quenza::Texture;
using Quenza::Vector;

using ShaderText = MaterialTest;

constexpr const char* PRELUDE =
    "def Vec3ToReal(vec3 v) real : ((doti(v) + dotj(v) + dotk(v)) / 3.0)\n"
    "def mulCompVec2(vec2 a, vec2 b) vec2 : vec2(doti(a) * doti(b), dotj(a) * dotj(b))\n"
    "def mulCompVec3(vec3 a, vec3 b) vec3 : vec3(doti(a) * doti(b), dotj(a) * dotj(b), dotk(a) * dotk(b))\n";

TEST_F(ShaderText, IsThePreludeAndOneDefinition) {
    const struct {
        ChannelId id;
        const char* header;
        bool isVec3;
    } cases[] = {
        {ChannelId::ALBEDO, "def eval(vec3 pos) vec3: ", true},
        {ChannelId::NORMAL_MAP, "def eval(vec3 pos) vec3: ", true},
        {ChannelId::TRANSMITTANCE, "def eval(vec3 pos) vec3: ", true},
        {ChannelId::SIGMA, "def eval(vec3 pos) real: ", false},
        {ChannelId::R_F, "def eval(vec3 pos) real: ", false},
        {ChannelId::BUMP, "def eval() real: ", false},
        {ChannelId::BLEND, "def eval() real: ", false},
    };
    for (const auto& [id, header, isVec3] : cases) {
        const Channel& target = channel(id);
        BaseMaterial* const material = addMaterial("M");
        BaseShader* const gradient = addShader(material, target.shader, PLUGINID_QSL_GRADIENT);
        Vector<Texture> textures;
        const std::string call =
            "lerp(vec3(1.00000, 1.00000, 1.00000), vec3(0.00000, 0.00000, 0.00000), doti(getTexCoords(0)))";
        EXPECT_EQ(makeShaderInfo(gradient, textures, target.programHeader(), target.valueType())
                      ->shader.toStdString(),
                  std::string(PRELUDE) + header + (isVec3 ? call : "Vec3ToReal(" + call + ")") + " * 1.00000")
            << target.name;
        EXPECT_TRUE(textures.empty());
    }
    Vector<Texture> textures;
    EXPECT_FALSE(makeShaderInfo(nullptr, textures, "", QSL_REAL));
}

TEST_F(ShaderText, OfAProgramNumbersItsImages) {
    BaseMaterial* const material = addMaterial("M");
    BaseShader* const program = addShader(material, MAT_ALBEDO_SHADER, PLUGINID_QSL_SHADER);
    data(program).SetString(QSL_CODE, "$tex01$ $tex02$ $tex03$ $tex01$ $tex04$");
    data(program).SetFilename(QSL_TEXTURE_1, Filename("a name as it stands.png"));
    data(program).SetFilename(QSL_TEXTURE_3, Filename("/c.png"));
    Vector<Texture> textures(3);
    const auto info = makeShaderInfo(program, textures, "not used", QSL_VEC3);
    EXPECT_EQ(info->shader, String("3 $tex02$ 4 3 $tex04$"));
    ASSERT_EQ(textures.size(), 5u);
    EXPECT_EQ(textures[3].path, String("a name as it stands.png"));
    EXPECT_EQ(textures[4].path, String("/c.png"));

    data(program).RemoveData(QSL_CODE);
    EXPECT_EQ(makeShaderInfo(program, textures, "", QSL_VEC3)->shader, String("no shader"));
}

TEST_F(ShaderText, StandsInTheChannelsParameter) {
    BaseMaterial* const material = addMaterial("M", MAT_KIND_PHONG);
    for (const Channel& entry : channels()) {
        data(material).SetBool(entry.enable, entry.id != ChannelId::BLEND);
        addShader(material, entry.shader, PLUGINID_QSL_NORMAL);
    }
    const std::string text = xml(exportMaterial(material));
    for (const char* const element :
         {"diffuse_albedo", "exponent", "bump", "displacement", "emission", "normal_map", "fresnel_scale"}) {
        EXPECT_NE(text.find(std::string("<") + element + ">\n\t\t\t<shader>\n"), std::string::npos)
            << element;
    }
    EXPECT_EQ(text.find("<texture>"), std::string::npos);
    EXPECT_TRUE(textureFiles().empty());
}

} // namespace
