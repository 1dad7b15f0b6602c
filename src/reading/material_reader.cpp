// SPDX-License-Identifier: MIT
#include "reading/material_reader.h"

#include "reading/parameter_parser.h"
#include "reading/parser_state.h"
#include "reading/spectrum_parser.h"
#include "reading/xml_values.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"

#include <array>
#include <string>
#include <tinyxml.h>

namespace Quenza {

using namespace SceneParseUtils;

void MaterialElementNames::addForms(const char* element) {
    names.push_back(element);
    for (const OlderForm& form : olderFormsOf(element))
        names.push_back(form.element);
}

void MaterialElementNames::addReference(const ReferenceElements& elements) {
    names.push_back(elements.uid);
    names.push_back(elements.name);
}

template <class Family>
bool MaterialReader::readOlderForm(const char* element, Ref<Family>& param) {
    const std::span<const OlderForm> forms = olderFormsOf(element);
    for (const OlderForm& form : forms) {
        const TiXmlElement* const child = optionalChildElement(element_, form.element);
        if (!child)
            continue;
        std::vector<const char*> names{element};
        for (const OlderForm& other : forms)
            names.push_back(other.element);
        checkOnlyOneOf(element_, names);
        parseOlderForm(state_, *child, form.content, material_, param);
        return true;
    }
    return false;
}

void MaterialReader::parameter(const char* element, Ref<WavelengthDependentParam>& param) {
    if (readOlderForm(element, param))
        return;
    if (const TiXmlElement* const child = optionalChildElement(element_, element))
        param = parseWavelengthDependentParam(state_, *child, material_.textures.size());
}

void MaterialReader::parameter(const char* element, Ref<WavelengthIndependentParam>& param) {
    if (const TiXmlElement* const child = optionalChildElement(element_, element))
        param = parseWavelengthIndependentParam(state_, *child, material_.textures.size());
}

void MaterialReader::parameter(const char* element, Ref<DisplacementParam>& param) {
    if (readOlderForm(element, param))
        return;
    if (const TiXmlElement* const child = optionalChildElement(element_, element))
        param = parseDisplacementParam(state_, *child, material_.textures.size());
}

void MaterialReader::parameter(const char* element, Ref<Vec3Param>& param) {
    if (const TiXmlElement* const child = optionalChildElement(element_, element))
        param = parseVec3Param(state_, *child, material_.textures.size());
}

void MaterialReader::boolean(const char* element, bool& value) {
    value = parseOptionalBool(element_, element, value);
}

void MaterialReader::integer(const char* element, i32& value) {
    value = parseOptionalInt(element_, element, value);
}

void MaterialReader::number(const char* element, double& value) {
    value = parseOptionalDouble(element_, element, value);
}

void MaterialReader::vector(const char* element, Vec3d& value) {
    value = parseOptionalVec3(element_, element, value);
}

void MaterialReader::text(const char* element, String& value) {
    if (const TiXmlElement* const child = optionalChildElement(element_, element))
        value = elementText(*child);
}

void MaterialReader::table(const char* element, Ref<TabulatedSpectralData>& data) {
    if (const TiXmlElement* const child = optionalChildElement(element_, element))
        data = parseTabulatedSpectralData(*child);
}

void MaterialReader::material(const ReferenceElements& elements, Ref<SceneNodeMaterial>& node,
                              SceneNodeUID& uid) {
    const TiXmlElement& reference = checkOnlyOneOf(element_, std::array{elements.uid, elements.name});
    if (reference.ValueTStr() == elements.name && elementText(reference).empty())
        return;
    state_.parseMaterialReference(element_, node, uid, elements.name, elements.uid);
}

void MaterialReader::medium(Ref<SceneNodeMedium>& node, SceneNodeUID& uid) {
    if (!firstChildOf(element_, {MEDIUM_REFERENCE.uid, MEDIUM_REFERENCE.name}))
        return;
    checkOnlyOneOf(element_, std::array{MEDIUM_REFERENCE.uid, MEDIUM_REFERENCE.name});
    uid = SceneNodeUID(parseOptionalUInt(element_, MEDIUM_REFERENCE.uid, SceneNodeUID::INVALID_VALUE));
    const std::string name = parseOptionalString(element_, MEDIUM_REFERENCE.name, "");
    if (name.empty())
        return;
    const auto found = state_.media.find(name);
    if (found == state_.media.end())
        throwParserError("Medium '" + name + "' is not defined. ", element_);
    node = found->second;
}

} // namespace Quenza
