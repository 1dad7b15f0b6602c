// SPDX-License-Identifier: MIT
#include "reading/rotation_parser.h"

#include "reading/element_table.h"
#include "reading/xml_values.h"

#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

namespace {

constexpr const char* TURN_CHILDREN[] = {"axis", "angle"};

Ref<Rotation> parseMatrix(const TiXmlElement& element) {
    return new MatrixRotation(xml::parseMatrix3Text(element));
}

Ref<Rotation> parseTurn(const TiXmlElement& element) {
    xml::checkChildrenAreInOnce(element, TURN_CHILDREN);
    return new AxisRotation(xml::parseVec3(element, "axis"), xml::parseDouble(element, "angle"));
}

struct RotationReader {
    const char* element;
    Ref<Rotation> (*parse)(const TiXmlElement& element);
};

constexpr RotationReader ROTATION_READERS[] = {
    {"matrix", parseMatrix},
    {"axis_rotation", parseTurn},
    {"rotation_quaternion", parseTurn},
};

} // namespace

Ref<Rotation> parseRotation(const TiXmlElement& holder) {
    static constexpr auto NAMES = elementNames(ROTATION_READERS);
    xml::checkChildrenAreIn(holder, NAMES);
    const TiXmlElement& element = xml::checkOnlyOneOf(holder, NAMES);
    return rowOf(ROTATION_READERS, element)->parse(element);
}

KeyFrame makeStaticKeyFrame(const Vec3d& pos) {
    return {pos, 0.0, {0.0, 0.0, 1.0}, 0.0};
}

KeyFrame parseKeyFrame(const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {"time", "pos", "rotation_quaternion"};
    xml::checkChildrenAreInOnce(element, NAMES);
    KeyFrame keyframe = makeStaticKeyFrame(xml::parseVec3(element, "pos"));
    keyframe.time = xml::parseDouble(element, "time");
    if (const TiXmlElement* const turn = xml::optionalChildElement(element, "rotation_quaternion")) {
        xml::checkChildrenAreInOnce(*turn, TURN_CHILDREN);
        keyframe.rotation_axis = xml::parseVec3(*turn, "axis");
        keyframe.rotation_angle = xml::parseDouble(*turn, "angle");
    }
    return keyframe;
}

Vector<KeyFrame> parseKeyFrames(const TiXmlElement& element) {
    Vector<KeyFrame> keyframes;
    for (const TiXmlElement* child = element.FirstChildElement("keyframe"); child;
         child = child->NextSiblingElement("keyframe"))
        keyframes.push_back(parseKeyFrame(*child));
    return keyframes;
}

} // namespace Quenza
