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

} // namespace
} // namespace Quenza
