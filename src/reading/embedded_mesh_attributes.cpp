// SPDX-License-Identifier: MIT
#include "reading/embedded_mesh_attributes.h"

#include "foundation/text_cursor.h"
#include "reading/format_decoder.h"
#include "reading/xml_values.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string_view>
#include <tinyxml.h>

namespace Quenza::EmbeddedMesh {

namespace {

constexpr u32 MAX_UV_SETS = 4;
constexpr u32 MAX_MATERIAL_INDEX = 0x7FFFFFFE;

/// 0 to 3 for "uv0" to "uv3", else MAX_UV_SETS.
u32 uvSet(std::string_view attribute) {
    const bool matches =
        attribute.size() == 3 && attribute.substr(0, 2) == "uv" && attribute[2] >= '0' && attribute[2] <= '3';
    return matches ? u32(attribute[2] - '0') : MAX_UV_SETS;
}

template <class Number>
bool parseNumber(TextCursor& cursor, Number& value);
template <>
bool parseNumber(TextCursor& cursor, double& value) {
    return cursor.parseDouble(value);
}
template <>
bool parseNumber(TextCursor& cursor, u32& value) {
    return cursor.parseUInt(value);
}

/// Exactly `count` numbers.
template <class Number>
bool parseNumbers(const char* text, Number* numbers, u32 count) {
    TextCursor cursor{std::string_view(text)};
    for (u32 i = 0; i < count; ++i) {
        const char* const before = cursor.position();
        cursor.skipWhitespace();
        if ((i > 0 && cursor.position() == before) || !parseNumber(cursor, numbers[i]))
            return false;
    }
    cursor.skipWhitespace();
    return cursor.atEnd();
}

Vec3f vec3Attribute(const TiXmlElement& element, const char* text, double scale) {
    double v[3];
    bool good = parseNumbers(text, v, 3);
    f32 scaled[3] = {};
    for (u32 i = 0; good && i < 3; ++i) {
        scaled[i] = f32(v[i] * scale);
        good = std::isfinite(scaled[i]);
    }
    if (!good)
        fail("Syntax error while parsing real 3-vector from '" + std::string(text) + "'", element);
    return {scaled[0], scaled[1], scaled[2]};
}

Vec2f vec2Attribute(const TiXmlElement& element, const char* text) {
    double v[2];
    if (!parseNumbers(text, v, 2) || !std::isfinite(f32(v[0])) || !std::isfinite(f32(v[1])))
        fail("syntax error while parsing Vec2", element);
    return {f32(v[0]), f32(v[1])};
}

/// The words of one kind of face in messages.
struct FaceWords {
    const char* capital;
    const char* small;
};

void checkFaceAttributes(const TiXmlElement& element, const FaceWords& words) {
    for (const TiXmlAttribute* a = element.FirstAttribute(); a; a = a->Next()) {
        const std::string_view name = a->Name();
        // The message says "element" though it's an attribute; that is meant.
        if (name != "v" && name != "uv" && name != "m")
            fail("Unexpected element '" + std::string(name) + "' while parsing " + words.small + ".",
                 element);
    }
}

const char* requiredAttribute(const TiXmlElement& element, const char* name, const FaceWords& words) {
    const char* const text = element.Attribute(name);
    if (!text)
        fail(std::string(words.capital) + " element was missing '" + name + "' attribute.", element);
    return text;
}

} // namespace

void fail(const std::string& message, const TiXmlElement& element) {
    throw ModelLoaderExcep(message + SceneParseUtils::errorContext(element));
}

bool parseIndices(const char* text, u32* indices, u32 count) {
    return parseNumbers(text, indices, count);
}

u32 numUVSets(const TiXmlElement& element) {
    u32 sets = 0;
    for (const TiXmlAttribute* a = element.FirstAttribute(); a; a = a->Next()) {
        const u32 set = uvSet(a->Name());
        if (set < MAX_UV_SETS)
            sets = std::max(sets, set + 1);
    }
    return sets;
}

void addVertex(const TiXmlElement& vertex, Mesh& mesh, double scale) {
    const char* position = nullptr;
    const char* normal = nullptr;
    for (const TiXmlAttribute* a = vertex.FirstAttribute(); a; a = a->Next()) {
        if (std::strcmp(a->Name(), "pos") == 0)
            position = a->Value();
        else if (std::strcmp(a->Name(), "normal") == 0)
            normal = a->Value();
        else if (uvSet(a->Name()) == MAX_UV_SETS)
            fail("Unexpected attribute '" + std::string(a->Name()) + "' while parsing vertex.", vertex);
    }
    if (!position)
        fail("Vertex element was missing 'pos' attribute.", vertex);
    const Vec3f p = vec3Attribute(vertex, position, scale);
    if (normal)
        mesh.addVertex(p, vec3Attribute(vertex, normal, 1));
    else
        mesh.addVertex(p);
}

void addUVEntry(const TiXmlElement& element, Mesh& mesh) {
    Vector<Vec2f> uvs(mesh.num_uv_mappings, Vec2f{0, 0});
    for (const TiXmlAttribute* a = element.FirstAttribute(); a; a = a->Next()) {
        const u32 set = uvSet(a->Name());
        if (set < uvs.size())
            uvs[set] = vec2Attribute(element, a->Value());
    }
    mesh.addUVs(uvs);
}

Face readFace(const TiXmlElement& element, u32 num_corners, const Mesh& mesh) {
    const FaceWords words = num_corners == 3 ? FaceWords{"Triangle", "triangle"} : FaceWords{"Quad", "quad"};
    checkFaceAttributes(element, words);
    const char* const v = requiredAttribute(element, "v", words);
    const char* const m = requiredAttribute(element, "m", words);
    Face face = {};
    if (!parseIndices(v, face.vertex_indices, num_corners))
        fail("syntax error while parsing vertex indices", element);
    const char* const uv = element.Attribute("uv");
    if (!uv && mesh.num_uv_mappings != 0)
        std::copy_n(face.vertex_indices, num_corners, face.uv_indices);
    if (uv && !parseIndices(uv, face.uv_indices, num_corners))
        fail("syntax error while parsing uv indices", element);
    if (!parseIndices(m, &face.material_index, 1) || face.material_index > MAX_MATERIAL_INDEX)
        fail("syntax error while parsing material index ('m')", element);
    return face;
}

} // namespace Quenza::EmbeddedMesh
