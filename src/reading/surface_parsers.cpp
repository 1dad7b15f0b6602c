// SPDX-License-Identifier: MIT
#include "reading/surface_parsers.h"

#include "reading/model_parser.h"
#include "reading/parser_state.h"
#include "reading/xml_values.h"
#include "scene/scene_node_material.h"

#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

namespace {

String parseShaderSource(const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {"shader"};
    const TiXmlElement& holder = xml::childElement(element, "shader");
    xml::checkChildrenAreInOnce(holder, NAMES);
    return String(xml::parseString(holder, "shader"));
}

} // namespace

Ref<SceneNodeParametricSurface> parseParametricSurface(ParserState&, const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {"uid", "name", "shader", "num_u", "num_v"};
    xml::checkChildrenAreInOnce(element, NAMES);
    const Ref<SceneNodeParametricSurface> surface = new SceneNodeParametricSurface;
    parseUIDAndName(element, *surface);
    surface->shader = parseShaderSource(element);
    surface->num_u = xml::parseOptionalInt(element, "num_u", surface->num_u);
    surface->num_v = xml::parseOptionalInt(element, "num_v", surface->num_v);
    return surface;
}

Ref<SceneNodeScatter> parseScatter(ParserState& state, const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {"uid",  "name",         "shader",    "density",
                                            "seed", "geometry_uid", "materials", "target_object_uid"};
    xml::checkChildrenAreInOnce(element, NAMES);
    const Ref<SceneNodeScatter> scatter = new SceneNodeScatter;
    parseUIDAndName(element, *scatter);
    scatter->shader = parseShaderSource(element);
    scatter->density = xml::parseOptionalDouble(element, "density", scatter->density);
    scatter->seed = xml::parseOptionalUInt(element, "seed", scatter->seed);
    scatter->geometry_uid = SceneNodeUID(xml::parseUInt(element, "geometry_uid"));
    if (const TiXmlElement* const materials = xml::optionalChildElement(element, "materials"))
        parseMaterialList(state, *materials, scatter->materials, scatter->material_uids);
    scatter->target_object_uid =
        SceneNodeUID(xml::parseOptionalUInt(element, "target_object_uid", SceneNodeUID::INVALID_VALUE));
    return scatter;
}

} // namespace Quenza
