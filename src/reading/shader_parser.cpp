// SPDX-License-Identifier: MIT
#include "reading/shader_parser.h"

#include "foundation/types.h"
#include "reading/element_table.h"
#include "reading/parser_state.h"
#include "reading/texture_parser.h"
#include "reading/xml_values.h"

#include <array>
#include <span>
#include <tinyxml.h>

namespace Quenza {

using namespace SceneParseUtils;

namespace {

double parseLimit(const TiXmlElement& element, const char* name, double default_value) {
    return parseOptionalDouble(element, name, default_value);
}

i32 parseLimit(const TiXmlElement& element, const char* name, i32 default_value) {
    return parseOptionalInt(element, name, default_value);
}

template <class Param>
Ref<ShaderParam> parseNumberParam(const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"name", "description", "min", "max", "value"});
    childElement(element, "value");
    Ref<Param> param = new Param;
    param->min = parseLimit(element, "min", param->min);
    param->max = parseLimit(element, "max", param->max);
    param->value = parseLimit(element, "value", param->value);
    return param;
}

Ref<ShaderParam> parseColourParam(const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"name", "description", "value"});
    Ref<Colour3ShaderParam> param = new Colour3ShaderParam;
    param->value = parseVec3(element, "value");
    return param;
}

struct ParamReader {
    const char* element;
    Ref<ShaderParam> (*parse)(const TiXmlElement& element);
};

constexpr ParamReader PARAM_READERS[] = {
    {"real", parseNumberParam<RealShaderParam>},
    {"int", parseNumberParam<IntShaderParam>},
    {"colour3", parseColourParam},
};

Ref<ShaderParam> parseParam(const TiXmlElement& holder) {
    static constexpr auto NAMES = elementNames(PARAM_READERS);
    const TiXmlElement& element = checkOnlyOneOf(holder, NAMES);
    checkChildrenAreIn(holder, NAMES);
    const Ref<ShaderParam> param = rowOf(PARAM_READERS, element)->parse(element);
    param->name = parseString(element, "name");
    param->description = parseOptionalString(element, "description", "");
    return param;
}

void parseParams(const TiXmlElement& element, ShaderInfo& info) {
    for (const TiXmlElement* param = element.FirstChildElement("param"); param;
         param = param->NextSiblingElement("param"))
        info.params.push_back(parseParam(*param));
}

void parseIncludes(const ParserState& state, const TiXmlElement& element, ShaderInfo& info) {
    for (const TiXmlElement* include = element.FirstChildElement("include"); include;
         include = include->NextSiblingElement("include"))
        info.includes.push_back(state.resolvePath(elementText(*include)));
}

} // namespace

Ref<ShaderInfo> parseShaderInfo(const ParserState& state, const TiXmlElement& element, const char* flag) {
    const std::array names{"param", "include", "texture", "shader", flag};
    checkChildrenAreIn(element, std::span(names).first(flag ? 5 : 4));
    if (!firstChildOf(element, {"param", "include", "texture", "shader"}))
        return nullptr;
    Ref<ShaderInfo> info = new ShaderInfo;
    parseParams(element, *info);
    parseIncludes(state, element, *info);
    info->textures = parseTextures(state, element);
    info->shader = parseOptionalString(element, "shader", "");
    return info;
}

} // namespace Quenza
