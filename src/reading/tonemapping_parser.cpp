// SPDX-License-Identifier: MIT
#include "reading/tonemapping_parser.h"

#include "reading/element_table.h"
#include "reading/xml_values.h"

#include <tinyxml.h>

namespace Quenza {

namespace {

namespace xml = SceneParseUtils;

void parseLinear(const TiXmlElement& element, SceneNodeTonemapping& node) {
    constexpr const char* names[] = {"scale"};
    xml::checkChildrenAreInOnce(element, names);
    node.tonemap_type = SceneNodeTonemapping::LINEAR;
    node.scale = xml::parseOptionalDouble(element, "scale", node.scale);
}

void parseReinhard(const TiXmlElement& element, SceneNodeTonemapping& node) {
    constexpr const char* names[] = {"pre_scale", "post_scale", "burn"};
    xml::checkChildrenAreInOnce(element, names);
    node.tonemap_type = SceneNodeTonemapping::REINHARD;
    node.pre_scale = xml::parseOptionalDouble(element, "pre_scale", node.pre_scale);
    node.post_scale = xml::parseOptionalDouble(element, "post_scale", node.post_scale);
    node.burn = xml::parseOptionalDouble(element, "burn", node.burn);
    if (!(node.burn > 0))
        throwParserError("Burn must be greater than 0.0 ", xml::childElement(element, "burn"));
}

void parseCameraMethod(const TiXmlElement& element, SceneNodeTonemapping& node) {
    constexpr const char* names[] = {"response_function_path", "film_iso", "ev_adjust"};
    xml::checkChildrenAreInOnce(element, names);
    node.tonemap_type = SceneNodeTonemapping::CAMERA;
    // As it is written: it is relative to the renderer's folder.
    node.response_function_path = xml::parseOptionalString(element, "response_function_path",
                                                           node.response_function_path.toStdString());
    node.film_iso = xml::parseOptionalDouble(element, "film_iso", node.film_iso);
    node.ev_adjust = xml::parseOptionalDouble(element, "ev_adjust", node.ev_adjust);
}

constexpr struct {
    const char* element;
    void (*parse)(const TiXmlElement&, SceneNodeTonemapping&);
} METHODS[] = {
    {"linear", parseLinear},
    {"reinhard", parseReinhard},
    {"camera", parseCameraMethod},
};

} // namespace

Ref<SceneNodeTonemapping> parseToneMapping(const ParserState&, const TiXmlElement& element) {
    constexpr const char* children[] = {"uid", "name", "linear", "reinhard", "camera"};
    xml::checkChildrenAreIn(element, children);
    const Ref<SceneNodeTonemapping> node = new SceneNodeTonemapping;
    node->name = "Tone Mapping";
    parseUIDAndName(element, *node);
    if (!firstChildInTable(METHODS, element))
        throwParserError("Failed to find tonemapping child.", element);
    const TiXmlElement& method = xml::checkOnlyOneOf(element, elementNames(METHODS));
    rowOf(METHODS, method)->parse(method, *node);
    return node;
}

} // namespace Quenza
