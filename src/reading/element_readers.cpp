// SPDX-License-Identifier: MIT
#include "reading/element_readers.h"

#include "reading/background_parser.h"
#include "reading/camera_parser.h"
#include "reading/light_parsers.h"
#include "reading/material_parser.h"
#include "reading/medium_parser.h"
#include "reading/mesh_parser.h"
#include "reading/model_parser.h"
#include "reading/older_model_parser.h"
#include "reading/settings_parser.h"
#include "reading/small_node_parsers.h"
#include "reading/sphere_parser.h"
#include "reading/surface_parsers.h"
#include "reading/tonemapping_parser.h"
#include "reading/xml_values.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

namespace {

using ReadElement = void (*)(ParserState& state, const TiXmlElement& element, NodeList& nodes);

template <auto PARSE>
void readNode(ParserState& state, const TiXmlElement& element, NodeList& nodes) {
    nodes.push_back(Ref<SceneNode>(PARSE(state, element)));
}

/// For elements that make no node.
template <auto PARSE>
void readState(ParserState& state, const TiXmlElement& element, NodeList&) {
    PARSE(state, element);
}

void parseAlias(ParserState& state, const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {"current_name", "new_name"};
    xml::checkChildrenAreInOnce(element, NAMES);
    const std::string current_name = xml::parseString(element, "current_name");
    const auto found = state.materials.find(current_name);
    if (found == state.materials.end())
        throwParserError("Tried to create an alias for the material with name '" + current_name +
                             "', which has not been defined.  ",
                         element);
    const Ref<SceneNodeMaterial> material = found->second;
    state.materials[xml::parseString(element, "new_name")] = material;
}

struct ElementReader {
    std::string_view element;
    ReadElement read;
};

/// In the order of the names.
constexpr ElementReader READERS[] = {
    {"alias_material", readState<parseAlias>},
    {"background", readNode<parseBackground>},
    {"background_settings", readNode<parseBackgroundSettings>},
    {"camera", readNode<parseCamera>},
    {"env_map", readNode<parseEnvironmentMap>},
    {"exit_portal", readExitPortal},
    {"layer_name", readState<parseLayerName>},
    {"material", readNode<parseMaterial>},
    {"medium", readNode<parseMedium>},
    {"mesh", readNode<parseMesh>},
    {"meshlight", readMeshLight},
    {"metadata", readNode<parseMetaData>},
    {"model", readNode<parseOlderModel>},
    {"model2", readNode<parseModel>},
    {"parametric_surface", readNode<parseParametricSurface>},
    {"rectanglelight", readRectangleLight},
    {"renderer_settings", readNode<parseRenderSettings>},
    {"scatter", readNode<parseScatter>},
    {"section_plane", readNode<parseSectionPlane>},
    {"skylight", readNode<parseSkylight>},
    {"sphere", readNode<parseSphere>},
    {"tonemapping", readNode<parseToneMapping>},
};
static_assert(std::is_sorted(std::begin(READERS), std::end(READERS),
                             [](const auto& a, const auto& b) { return a.element < b.element; }));

} // namespace

bool isInclude(const TiXmlElement& element) {
    return element.ValueStr() == "include";
}

void readNodeElement(ParserState& state, const TiXmlElement& element, NodeList& nodes) {
    const std::string_view name = element.ValueStr();
    const auto* const reader =
        std::lower_bound(std::begin(READERS), std::end(READERS), name,
                         [](const ElementReader& row, std::string_view text) { return row.element < text; });
    if (reader == std::end(READERS) || reader->element != name)
        throwParserError("Unknown element type", element);
    reader->read(state, element, nodes);
}

} // namespace Quenza
