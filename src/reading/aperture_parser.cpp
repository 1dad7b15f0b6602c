// SPDX-License-Identifier: MIT
#include "reading/aperture_parser.h"

#include "reading/element_table.h"
#include "reading/xml_values.h"

#include <tinyxml.h>

namespace Quenza {

namespace {

namespace xml = SceneParseUtils;

constexpr i32 MIN_BLADES = 3;

Ref<ApertureShape> parseCircular(const ParserState&, const TiXmlElement& element) {
    xml::checkChildrenAreIn(element, {});
    return new ApertureCircular;
}

Ref<ApertureShape> parseGenerated(const ParserState&, const TiXmlElement& element) {
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

Ref<ApertureShape> parseImageAperture(const ParserState& state, const TiXmlElement& element) {
    constexpr const char* names[] = {"path"};
    xml::checkChildrenAreInOnce(element, names);
    const Ref<ApertureImage> shape = new ApertureImage;
    shape->path = state.resolvePath(xml::parseString(element, "path"));
    return shape;
}

constexpr struct {
    const char* element;
    Ref<ApertureShape> (*parse)(const ParserState&, const TiXmlElement&);
} KINDS[] = {
    {"circular", parseCircular},
    {"generated", parseGenerated},
    {"image", parseImageAperture},
};

} // namespace

Ref<ApertureShape> parseApertureShape(const ParserState& state, const TiXmlElement& element) {
    static constexpr auto NAMES = elementNames(KINDS);
    xml::checkChildrenAreIn(element, NAMES);
    const TiXmlElement& kind = xml::checkOnlyOneOf(element, NAMES);
    return rowOf(KINDS, kind)->parse(state, kind);
}

} // namespace Quenza
