// SPDX-License-Identifier: MIT
#include "scene/shader_param.h"

#include "foundation/exceptions.h"
#include "foundation/string_utils.h"
#include "scene/xml_elements.h"

#include <algorithm>

namespace Quenza {

namespace {

bool isNameCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

} // namespace

void ShaderParam::writeNameAndDescription(OStream& stream, u32 depth) const {
    writeStringElement(stream, depth, "name", name);
    writeStringElement(stream, depth, "description", description);
}

String ShaderParam::definition(const char* type, const std::string& value) const {
    if (!std::ranges::all_of(name.view(), isNameCharacter))
        throw QuenzaException(
            "Invalid character in shader parameter name: Only alphanumeric and underscore allowed: '" + name +
            "'");
    return "def param" + name + "() " + type + " : " + value + "\n";
}

void RealShaderParam::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "param");
    writeOpenTag(stream, depth + 1, "real");
    writeNameAndDescription(stream, depth + 2);
    writeDoubleElement(stream, depth + 2, "min", min);
    writeDoubleElement(stream, depth + 2, "max", max);
    writeDoubleElement(stream, depth + 2, "value", value);
    writeCloseTag(stream, depth + 1, "real");
    writeCloseTag(stream, depth, "param");
}

void RealShaderParam::getShaderFunction(String& out) const {
    out = definition("real", doubleToString(value));
}

void IntShaderParam::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "param");
    writeOpenTag(stream, depth + 1, "int");
    writeNameAndDescription(stream, depth + 2);
    writeIntElement(stream, depth + 2, "min", min);
    writeIntElement(stream, depth + 2, "max", max);
    writeIntElement(stream, depth + 2, "value", value);
    writeCloseTag(stream, depth + 1, "int");
    writeCloseTag(stream, depth, "param");
}

void IntShaderParam::getShaderFunction(String& out) const {
    out = definition("int", toString(value));
}

void Colour3ShaderParam::writeToXML(OStream& stream, u32 depth) const {
    writeOpenTag(stream, depth, "param");
    writeOpenTag(stream, depth + 1, "colour3");
    writeNameAndDescription(stream, depth + 2);
    writeVec3Element(stream, depth + 2, "value", value);
    writeCloseTag(stream, depth + 1, "colour3");
    writeCloseTag(stream, depth, "param");
}

void Colour3ShaderParam::getShaderFunction(String& out) const {
    out = definition("vec3", "vec3(" + doubleToString(value.x) + ", " + doubleToString(value.y) + ", " +
                                 doubleToString(value.z) + ")");
}

} // namespace Quenza
