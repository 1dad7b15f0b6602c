// SPDX-License-Identifier: MIT
#include "reading/white_point_parser.h"

#include "foundation/exceptions.h"
#include "reading/parser_state.h"
#include "reading/xml_values.h"
#include "scene/scene_node_render_settings.h"

#include <string>
#include <string_view>
#include <tinyxml.h>

namespace Quenza {

namespace {

namespace xml = SceneParseUtils;

constexpr std::string_view WHITESPACE = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(WHITESPACE);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(WHITESPACE) - first + 1);
}

Ref<WhitePoint> parseTwoNumbers(const TiXmlElement& element) {
    const Vec2d chromaticity = xml::parseVec2Text(element);
    return new WhitePoint(chromaticity.x, chromaticity.y);
}

Ref<WhitePoint> parseCoordinates(const TiXmlElement& element) {
    constexpr const char* names[] = {"x", "y"};
    xml::checkChildrenAreInOnce(element, names);
    if (!element.FirstChildElement())
        return parseTwoNumbers(element);
    return new WhitePoint(xml::parseDouble(element, "x"), xml::parseDouble(element, "y"));
}

} // namespace

Ref<WhitePoint> parseWhitePoint(const TiXmlElement& element) {
    constexpr const char* names[] = {"chromaticity_coordinates"};
    xml::checkChildrenAreInOnce(element, names);
    if (const TiXmlElement* const coordinates = xml::optionalChildElement(element, names[0]))
        return parseCoordinates(*coordinates);
    const std::string text = xml::elementText(element);
    const std::string_view words = trimmed(text);
    // A name is a single word; "9300" is one of them.
    if (words.find_first_of(WHITESPACE) != std::string_view::npos)
        return parseTwoNumbers(element);
    try {
        return whitePointFromName(String(words));
    } catch (const QuenzaException& e) {
        throwParserError(e.what(), element);
    }
}

} // namespace Quenza
