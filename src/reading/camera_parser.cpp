// SPDX-License-Identifier: MIT
#include "reading/camera_parser.h"

#include "reading/aperture_parser.h"
#include "reading/rotation_parser.h"
#include "reading/white_point_parser.h"
#include "reading/xml_values.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <tinyxml.h>

namespace Quenza {

namespace {

namespace xml = SceneParseUtils;

constexpr const char* CHILDREN[] = {
    "uid",
    "name",
    "aperture_radius",
    "focus_distance",
    "sensor_width",
    "lens_sensor_dist",
    "exposure_duration",
    "lens_shift_up_distance",
    "lens_shift_right_distance",
    "autofocus",
    "obstacle_map",
    "aperture_shape",
    "keyframe",
    "up",
    "forwards",
    "camera_type",
    "white_point",
};

constexpr struct {
    const char* child;
    double SceneNodeCamera::*field;
} NUMBERS[] = {
    {"aperture_radius", &SceneNodeCamera::aperture_radius},
    {"focus_distance", &SceneNodeCamera::focus_distance},
    {"sensor_width", &SceneNodeCamera::sensor_width},
    {"lens_sensor_dist", &SceneNodeCamera::lens_sensor_dist},
    {"exposure_duration", &SceneNodeCamera::exposure_duration},
    {"lens_shift_up_distance", &SceneNodeCamera::lens_shift_up_distance},
    {"lens_shift_right_distance", &SceneNodeCamera::lens_shift_right_distance},
};

void parseNumbers(const TiXmlElement& element, SceneNodeCamera& camera) {
    for (const auto& number : NUMBERS)
        camera.*number.field = xml::parseOptionalDouble(element, number.child, camera.*number.field);
    if (!(camera.aperture_radius > 0))
        throwParserError("Aperture_radius must be greater than zero (e.g. 0.001) ",
                         xml::childElement(element, "aperture_radius"));
}

/// Its presence alone turns it on, yet a text that says otherwise is believed.
bool parseAutofocus(const TiXmlElement& element) {
    const TiXmlElement* const autofocus = xml::optionalChildElement(element, "autofocus");
    return autofocus && (xml::elementText(*autofocus).empty() || xml::parseBoolText(*autofocus));
}

u32 parseCameraType(const TiXmlElement& element) {
    const TiXmlElement* const child = xml::optionalChildElement(element, "camera_type");
    if (!child)
        return SceneNodeCamera::THIN_LENS_PERSPECTIVE;
    const std::string word = xml::elementText(*child);
    const auto* const found = std::find(std::begin(CAMERA_TYPE_WORDS), std::end(CAMERA_TYPE_WORDS), word);
    if (found == std::end(CAMERA_TYPE_WORDS))
        throwParserError("Unknown camera type '" + word +
                             "', should be either 'thin-lens-perspective', 'orthographic' or 'spherical'.",
                         *child);
    return u32(found - std::begin(CAMERA_TYPE_WORDS));
}

String parseObstacleMap(const ParserState& state, const TiXmlElement& element) {
    constexpr const char* names[] = {"path"};
    xml::checkChildrenAreInOnce(element, names);
    return state.resolvePath(xml::parseString(element, "path"));
}

} // namespace

Ref<SceneNodeCamera> parseCamera(ParserState& state, const TiXmlElement& element) {
    xml::checkChildrenAreIn(element, CHILDREN);
    const Ref<SceneNodeCamera> camera = new SceneNodeCamera;
    parseUIDAndName(element, *camera);
    parseNumbers(element, *camera);
    camera->autofocus = parseAutofocus(element);
    if (const TiXmlElement* const map = xml::optionalChildElement(element, "obstacle_map"))
        camera->obstacle_map_path = parseObstacleMap(state, *map);
    if (const TiXmlElement* const shape = xml::optionalChildElement(element, "aperture_shape"))
        camera->aperture_shape = parseApertureShape(state, *shape);
    camera->keyframes = parseKeyFrames(element);
    camera->up = xml::parseOptionalVec3(element, "up", camera->up);
    camera->forwards = xml::parseOptionalVec3(element, "forwards", camera->forwards);
    camera->camera_type = parseCameraType(element);
    if (const TiXmlElement* const child = xml::optionalChildElement(element, "white_point")) {
        const Ref<WhitePoint> white_point = parseWhitePoint(*child);
        state.white_point_x = white_point->x;
        state.white_point_y = white_point->y;
    }
    return camera;
}

} // namespace Quenza
