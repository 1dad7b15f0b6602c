// SPDX-License-Identifier: MIT
#include "reading/model_parser.h"

#include "reading/emission_parser.h"
#include "reading/parser_state.h"
#include "reading/rotation_parser.h"
#include "reading/xml_values.h"
#include "scene/scene_node_material.h"

#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

Ref<SceneNodeModel> parseModel(ParserState& state, const TiXmlElement& element) {
    static constexpr const char* NAMES[] = {
        "keyframe", "uid",       "name",           "scale",       "geometry_uid",
        "rotation", "materials", "emission_scale", "ies_profile", "invisible_to_camera"};
    xml::checkChildrenAreIn(element, NAMES);
    const Ref<SceneNodeModel> model = new SceneNodeModel;
    parseUIDAndName(element, *model);
    model->geometry_uid = SceneNodeUID(xml::parseUInt(element, "geometry_uid"));
    model->scale = xml::parseOptionalDouble(element, "scale", model->scale);
    model->invisible_to_camera = xml::parseOptionalBool(element, "invisible_to_camera", false);
    model->rotation = parseRotation(xml::childElement(element, "rotation"));
    model->keyframes = parseKeyFrames(element);
    if (const TiXmlElement* const materials = xml::optionalChildElement(element, "materials"))
        parseMaterialList(state, *materials, model->materials, model->material_uids);
    parseModelEmission(state, element, *model);
    return model;
}

void parseMaterialList(const ParserState& state, const TiXmlElement& list,
                       Vector<Ref<SceneNodeMaterial>>& materials, Vector<SceneNodeUID>& uids) {
    bool has_names = false;
    for (const TiXmlElement* entry = list.FirstChildElement(); entry; entry = entry->NextSiblingElement()) {
        if (entry->ValueStr() == "material_name") {
            materials.push_back(state.findMaterial(xml::elementText(*entry), *entry));
            uids.push_back(SceneNodeUID::INVALID);
            has_names = true;
        } else if (entry->ValueStr() == "material_uid") {
            materials.push_back(nullptr);
            uids.push_back(SceneNodeUID(xml::parseUIntText(*entry)));
        } else {
            throwParserError("Found unexpected element '" + entry->ValueStr() + "'", *entry);
        }
    }
    if (!has_names)
        materials.clear();
}

void parseModelEmission(const ParserState& state, const TiXmlElement& element, SceneNodeModel& model) {
    for (const TiXmlElement* child = element.FirstChildElement(); child;
         child = child->NextSiblingElement()) {
        if (child->ValueStr() == "ies_profile")
            model.ies_profiles.push_back(parseIESProfile(state, *child));
        else if (child->ValueStr() == "emission_scale")
            model.emission_scales.push_back(parseEmissionScale(state, *child));
    }
}

} // namespace Quenza
