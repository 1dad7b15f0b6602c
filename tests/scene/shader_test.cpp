// SPDX-License-Identifier: MIT
#include "scene/shader_info.h"

#include "scene/rotation.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

namespace Quenza {
namespace {

template <class Param, class Value>
Ref<ShaderParam> makeParam(const char* name, const Value& value) {
    Ref<Param> param = new Param;
    param->name = name;
    param->description = "a  b";
    param->value = value;
    return param;
}

Ref<ShaderParam> makeReal(const char* name) {
    Ref<RealShaderParam> param = new RealShaderParam;
    param->name = name;
    param->min = -1;
    param->max = 2.5;
    param->value = 0.5;
    return param;
}

TEST(ShaderParam, WritesItsElementAndSoDoesItsClone) {
    struct Case {
        Ref<ShaderParam> param;
        u32 type;
        const char* text;
    };
    const Case cases[] = {
        {makeReal("size"), 0,
         "\t<param>\n\t\t<real>\n\t\t\t<name>size</name>\n\t\t\t<description></description>\n"
         "\t\t\t<min>-1</min>\n\t\t\t<max>2.5</max>\n\t\t\t<value>0.5</value>\n\t\t</real>\n\t</param>\n"},
        {makeParam<IntShaderParam>("not-valid", -3), 1,
         "\t<param>\n\t\t<int>\n\t\t\t<name>not-valid</name>\n"
         "\t\t\t<description><![CDATA[a  b]]></description>\n"
         "\t\t\t<min>0</min>\n\t\t\t<max>0</max>\n\t\t\t<value>-3</value>\n\t\t</int>\n\t</param>\n"},
        {makeParam<Colour3ShaderParam>("tint", Vec3d{1, 0.5, 0}), 3,
         "\t<param>\n\t\t<colour3>\n\t\t\t<name>tint</name>\n"
         "\t\t\t<description><![CDATA[a  b]]></description>\n"
         "\t\t\t<value>1 0.5 0</value>\n\t\t</colour3>\n\t</param>\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.param->getType(), c.type);
        EXPECT_EQ(xmlText(*c.param, 1), c.text);
        EXPECT_EQ(xmlText(*c.param->clone(), 1), c.text);
    }
}

TEST(ShaderParam, DefinesAFunction) {
    struct Case {
        Ref<ShaderParam> param;
        const char* text;
    };
    const Case cases[] = {
        {makeReal("Size_2"), "def paramSize_2() real : 0.5\n"},
        {makeParam<IntShaderParam>("n", -3), "def paramn() int : -3\n"},
        {makeParam<Colour3ShaderParam>("c", Vec3d{1, 1e-7, 0}), "def paramc() vec3 : vec3(1, 1e-7, 0)\n"},
    };
    for (const Case& c : cases) {
        String text = "what was there";
        c.param->getShaderFunction(text);
        EXPECT_EQ(text.toStdString(), c.text);
    }
}

TEST(ShaderParam, NamesOfFunctionsAreChecked) {
    for (const char* name : {"a-b", "a b", "\xC3\xA9", "a(", "a.b"}) {
        String text;
        EXPECT_EQ(thrownText([&] { makeReal(name)->getShaderFunction(text); }),
                  "Invalid character in shader parameter name: Only alphanumeric and underscore allowed: '" +
                      std::string(name) + "'");
    }
}

TEST(TexCoordGenerator, WritesItsElementAndSoDoesItsClone) {
    Ref<UVTexCoordGenerator> uv = new UVTexCoordGenerator;
    uv->matrix = {{1, 2, 3, 4}};
    uv->translation = {0.5, -1};
    Ref<SphericalTexCoordGenerator> spherical = new SphericalTexCoordGenerator;
    spherical->rotation = new AxisRotation({0, 0, 1}, 1.6);
    Ref<SphericalEnvTexCoordGenerator> environment = new SphericalEnvTexCoordGenerator;
    environment->rotation = new MatrixRotation;

    struct Case {
        Ref<TexCoordGenerator> generator;
        u32 type;
        const char* text;
    };
    const Case cases[] = {
        {uv, 0, "\t<uv>\n\t\t<matrix>1 2 3 4</matrix>\n\t\t<translation>0.5 -1</translation>\n\t</uv>\n"},
        {spherical, 1,
         "\t<spherical>\n\t\t<rotation>\n\t\t\t<axis_rotation>\n\t\t\t\t<axis>0 0 1</axis>\n"
         "\t\t\t\t<angle>1.6</angle>\n\t\t\t</axis_rotation>\n\t\t</rotation>\n\t</spherical>\n"},
        {environment, 2,
         "\t<spherical_environment>\n\t\t<rotation>\n\t\t\t<matrix>\n\t\t\t\t1 0 0 0 1 0 0 0 1\n"
         "\t\t\t</matrix>\n\t\t</rotation>\n\t</spherical_environment>\n"},
        {new SphericalTexCoordGenerator, 1,
         "\t<spherical>\n\t\t<rotation>\n\t\t</rotation>\n\t</spherical>\n"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(c.generator->getType(), c.type);
        EXPECT_EQ(xmlText(*c.generator, 1), c.text);
        EXPECT_EQ(xmlText(*c.generator->clone(), 1), c.text);
    }
}

TEST(Texture, WritesDefaultsWithoutGenerator) {
    Texture texture;
    EXPECT_EQ(xmlText(texture), "<texture>\n\t<path></path>\n\t<a>0</a>\n\t<b>1</b>\n\t<c>0</c>\n"
                                "\t<uv_set_index>0</uv_set_index>\n\t<exponent>2.2</exponent>\n"
                                "\t<smooth>false</smooth>\n</texture>\n");
}

TEST(Texture, WritesPathAndGenerator) {
    Texture texture;
    texture.path = "wood & oak.jpg";
    texture.uv_set_index = 1;
    texture.smooth = true;
    texture.tex_coord_generation = new UVTexCoordGenerator;
    XMLWriteOptions absolute;
    absolute.base_path = "base";
    absolute.write_absolute_paths = true;
    const std::string rest =
        "\t<a>0</a>\n\t<b>1</b>\n\t<c>0</c>\n\t<uv_set_index>1</uv_set_index>\n"
        "\t<exponent>2.2</exponent>\n\t<tex_coord_generation>\n\t\t<uv>\n\t\t\t<matrix>1 0 0 1</matrix>\n"
        "\t\t\t<translation>0 0</translation>\n\t\t</uv>\n\t</tex_coord_generation>\n"
        "\t<smooth>true</smooth>\n</texture>\n";
    EXPECT_EQ(xmlText(texture), "<texture>\n\t<path>wood &amp; oak.jpg</path>\n" + rest);
#ifndef _WIN32
    EXPECT_EQ(xmlText(texture, 0, absolute), "<texture>\n\t<path>base/wood &amp; oak.jpg</path>\n" + rest);
#endif
}

TEST(ShaderInfo, WritesEverythingInOrder) {
    ShaderInfo info("def eval() real: a < b && c");
    info.params.push_back(makeReal("r"));
    info.includes.push_back("lib/noise.qsl");
    info.textures.push_back(Texture());
    const std::string text = xmlText(info, 1);
    const std::string texture = xmlText(info.textures[0], 1);
    EXPECT_EQ(text, xmlText(*info.params[0], 1) + "\t<include>lib/noise.qsl</include>\n" + texture +
                        "\t<shader><![CDATA[def eval() real: a < b && c]]></shader>\n");
}

TEST(ShaderInfo, EmptinessDoesNotLookAtTextures) {
    ShaderInfo info;
    info.textures.push_back(Texture());
    EXPECT_TRUE(info.isEmpty());
    info.includes.push_back("x");
    EXPECT_FALSE(info.isEmpty());
    EXPECT_FALSE(ShaderInfo("x").isEmpty());
    EXPECT_TRUE(ShaderInfo().isEmpty());
}

} // namespace
} // namespace Quenza
