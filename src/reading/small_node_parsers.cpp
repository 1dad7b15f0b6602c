// SPDX-License-Identifier: MIT
#include "reading/small_node_parsers.h"

#include "reading/xml_values.h"

#include <string>
#include <tinyxml.h>

namespace Quenza {

namespace {

namespace xml = SceneParseUtils;

constexpr struct {
    const char* element;
    String SceneNodeMetaData::*field;
} METADATA_TEXTS[] = {
    {"exporter", &SceneNodeMetaData::exporter},
    {"author", &SceneNodeMetaData::author},
    {"description", &SceneNodeMetaData::description},
    {"created_date", &SceneNodeMetaData::created_date},
    {"platform", &SceneNodeMetaData::platform},
    {"exporter_specific", &SceneNodeMetaData::exporter_specific},
};

u32 parseObjectListType(const TiXmlElement& element) {
    const TiXmlElement* const child = xml::optionalChildElement(element, "object_list_type");
    if (!child)
        return SceneNodeSectionPlane::EXCLUDE;
    const std::string word = xml::elementText(*child);
    if (word == "include")
        return SceneNodeSectionPlane::INCLUDE;
    if (word != "exclude")
        throwParserError("Unknown object list type '" + word + "', should be either 'include' or 'exclude'.",
                         *child);
    return SceneNodeSectionPlane::EXCLUDE;
}

Vector<SceneNodeUID> parseObjectList(const TiXmlElement& element) {
    constexpr const char* names[] = {"uid"};
    xml::checkChildrenAreIn(element, names);
    Vector<SceneNodeUID> objects;
    for (const TiXmlElement* child = element.FirstChildElement(); child; child = child->NextSiblingElement())
        objects.push_back(SceneNodeUID(xml::parseUIntText(*child)));
    return objects;
}

} // namespace

Ref<SceneNodeMetaData> parseMetaData(const ParserState&, const TiXmlElement& element) {
    constexpr const char* names[] = {"uid",         "name",         "exporter", "author",
                                     "description", "created_date", "platform", "exporter_specific"};
    xml::checkChildrenAreInOnce(element, names);
    const Ref<SceneNodeMetaData> node = new SceneNodeMetaData;
    parseUIDAndName(element, *node);
    for (const auto& text : METADATA_TEXTS)
        (*node).*text.field = xml::parseOptionalString(element, text.element, "");
    return node;
}

Ref<SceneNodeSectionPlane> parseSectionPlane(const ParserState&, const TiXmlElement& element) {
    constexpr const char* names[] = {"uid",     "name",          "point",       "normal",
                                     "enabled", "cull_geometry", "object_list", "object_list_type"};
    xml::checkChildrenAreInOnce(element, names);
    const Ref<SceneNodeSectionPlane> node = new SceneNodeSectionPlane;
    parseUIDAndName(element, *node);
    node->point = xml::parseOptionalVec3(element, "point", node->point);
    node->normal = xml::parseOptionalVec3(element, "normal", node->normal);
    node->enabled = xml::parseOptionalBool(element, "enabled", node->enabled);
    node->cull_geometry = xml::parseOptionalBool(element, "cull_geometry", node->cull_geometry);
    node->object_list_type = parseObjectListType(element);
    if (const TiXmlElement* const list = xml::optionalChildElement(element, "object_list"))
        node->object_list = parseObjectList(*list);
    return node;
}

void parseLayerName(ParserState& state, const TiXmlElement& element) {
    xml::checkChildrenAreIn(element, {});
    state.layer_names.push_back(xml::elementText(element));
}

} // namespace Quenza
