// SPDX-License-Identifier: MIT
#include "reading/sphere_parser.h"

#include "reading/parser_state.h"
#include "reading/rotation_parser.h"
#include "reading/xml_values.h"
#include "scene/scene_node_material.h"

#include <array>
#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

Ref<SceneNodeSphere> parseSphere(ParserState& state, const TiXmlElement& element) {
    static constexpr std::array NAMES{"uid", "name", "keyframe", "radius", "material_name", "material_uid"};
    static constexpr std::array MATERIAL_NAMES{"material_name", "material_uid"};
    xml::checkChildrenAreIn(element, NAMES);
    xml::checkOnlyOneOf(element, MATERIAL_NAMES);
    const Ref<SceneNodeSphere> sphere = new SceneNodeSphere;
    parseUIDAndName(element, *sphere);
    sphere->keyframes = parseKeyFrames(element);
    sphere->radius = xml::parseDouble(element, "radius");
    state.parseMaterialReference(element, sphere->material, sphere->material_uid);
    return sphere;
}

} // namespace Quenza
