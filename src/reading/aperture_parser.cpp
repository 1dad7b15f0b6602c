// SPDX-License-Identifier: MIT
#include "reading/aperture_parser.h"

#include "reading/xml_values.h"

#include <string_view>
#include <tinyxml.h>

namespace Quenza {

namespace {

namespace xml = SceneParseUtils;

constexpr i32 MIN_BLADES = 3;

Ref<ApertureShape> parseGenerated(const TiXmlElement& element) {
    constexpr const char* names[] = {"num_blades", "blade_offset", "blade_curvature_radius", "start_angle"};
    xml::checkChildrenAreInOnce(element, names);
    const Ref<ApertureGenerated> shape = new ApertureGenerated;
    shape->num_blades = xml::parseOptionalInt(element, "num_blades", shape->num_blades);
    shape->blade_offset = xml::parseOptionalDouble(element, "blade_offset", shape->blade_offset);
    shape->blade_curvature_radius =
        xml::parseOptionalDouble(element, "blade_curvature_radius", shape->blade_curvature_radius);
    shape->start_angle = xml::parseOptionalDouble(element, "start_angle", shape->start_angle);
    if (shape->num_blades < MIN_BLADES)
        throwParserError("num_blades must be >= 3", element);
    if (!(shape->blade_offset > 0))
        throwParserError("blade_offset must be > 0", element);
    if (!(shape->blade_curvature_radius >= shape->blade_offset))
        throwParserError("blade_curvature_radius must be >= blade_offset", element);
    return shape;
}

Ref<ApertureShape> parseImage(const ParserState& state, const TiXmlElement& element) {
    constexpr const char* names[] = {"path"};
    xml::checkChildrenAreInOnce(element, names);
    const Ref<ApertureImage> shape = new ApertureImage;
    shape->path = state.resolvePath(xml::parseString(element, "path"));
    return shape;
}

} // namespace

Ref<ApertureShape> parseApertureShape(const ParserState& state, const TiXmlElement& element) {
    constexpr const char* names[] = {"circular", "generated", "image"};
    xml::checkChildrenAreIn(element, names);
    const TiXmlElement& kind = xml::checkOnlyOneOf(element, names);
    const std::string_view name = kind.Value();
    if (name == "generated")
        return parseGenerated(kind);
    if (name == "image")
        return parseImage(state, kind);
    xml::checkChildrenAreIn(kind, {});
    return new ApertureCircular;
}

} // namespace Quenza
