// SPDX-License-Identifier: MIT
#include "reading/texture_parser.h"

#include "reading/element_table.h"
#include "reading/parser_state.h"
#include "reading/rotation_parser.h"
#include "reading/xml_values.h"

#include <array>
#include <tinyxml.h>

namespace Quenza {

using namespace SceneParseUtils;

namespace {

Ref<TexCoordGenerator> parseUV(const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"matrix", "translation"});
    Ref<UVTexCoordGenerator> generator = new UVTexCoordGenerator;
    generator->matrix = parseOptionalMatrix2(element, "matrix", generator->matrix);
    generator->translation = parseOptionalVec2(element, "translation", generator->translation);
    return generator;
}

template <class Generator>
Ref<TexCoordGenerator> parseSpherical(const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"rotation"});
    Ref<Generator> generator = new Generator;
    generator->rotation = parseRotation(childElement(element, "rotation"));
    return generator;
}

struct GeneratorReader {
    const char* element;
    Ref<TexCoordGenerator> (*parse)(const TiXmlElement& element);
};

constexpr GeneratorReader GENERATOR_READERS[] = {
    {"uv", parseUV},
    {"spherical", parseSpherical<SphericalTexCoordGenerator>},
    {"spherical_environment", parseSpherical<SphericalEnvTexCoordGenerator>},
};

} // namespace

Ref<TexCoordGenerator> parseTexCoordGenerator(const TiXmlElement& holder) {
    static constexpr auto NAMES = elementNames(GENERATOR_READERS);
    const TiXmlElement& element = checkOnlyOneOf(holder, NAMES);
    checkChildrenAreIn(holder, NAMES);
    return rowOf(GENERATOR_READERS, element)->parse(element);
}

Texture parseTexture(const ParserState& state, const TiXmlElement& element) {
    checkChildrenAreInOnce(element, std::array{"path", "a", "b", "c", "uv_set_index", "exponent",
                                               "tex_coord_generation", "smooth"});
    Texture texture;
    texture.path = state.resolvePath(parseString(element, "path"));
    texture.a = parseOptionalDouble(element, "a", texture.a);
    texture.b = parseOptionalDouble(element, "b", texture.b);
    texture.c = parseOptionalDouble(element, "c", texture.c);
    texture.uv_set_index = parseOptionalInt(element, "uv_set_index", texture.uv_set_index);
    texture.exponent = parseOptionalDouble(element, "exponent", texture.exponent);
    if (const TiXmlElement* const generation = optionalChildElement(element, "tex_coord_generation"))
        texture.tex_coord_generation = parseTexCoordGenerator(*generation);
    texture.smooth = parseOptionalBool(element, "smooth", texture.smooth);
    return texture;
}

Vector<Texture> parseTextures(const ParserState& state, const TiXmlElement& parent) {
    Vector<Texture> textures;
    for (const TiXmlElement* element = parent.FirstChildElement("texture"); element;
         element = element->NextSiblingElement("texture"))
        textures.push_back(parseTexture(state, *element));
    return textures;
}

} // namespace Quenza
