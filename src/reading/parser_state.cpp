// SPDX-License-Identifier: MIT
#include "reading/parser_state.h"

#include "foundation/file_utils.h"
#include "reading/xml_values.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"
#include "scene/scene_node_mesh.h"

#include <tinyxml.h>

namespace Quenza {

namespace xml = SceneParseUtils;

void throwParserError(const std::string& message, const TiXmlElement& element) {
    throw QuenzaModelParserExcep(message + xml::errorContext(element));
}

ParserState::ParserState() = default;
ParserState::~ParserState() = default;

String ParserState::resolvePath(const String& path) const {
    return path.empty() ? path : FileUtils::join(base_from_scene, path);
}

Ref<SceneNodeMaterial> ParserState::findMaterial(const std::string& name, const TiXmlElement& element) const {
    const auto found = materials.find(name);
    if (found == materials.end())
        throwParserError("Material '" + name + "' is not defined. ", element);
    return found->second;
}

Ref<SceneNodeMesh> ParserState::findMesh(const std::string& name) const {
    const auto found = meshes.find(name);
    return found == meshes.end() ? nullptr : found->second;
}

bool ParserState::parseMaterialReference(const TiXmlElement& element, Ref<SceneNodeMaterial>& node,
                                         SceneNodeUID& uid, const char* name_child,
                                         const char* uid_child) const {
    if (const TiXmlElement* const name = xml::optionalChildElement(element, name_child)) {
        node = findMaterial(xml::elementText(*name), element);
        return true;
    }
    const TiXmlElement* const number = xml::optionalChildElement(element, uid_child);
    if (number)
        uid = SceneNodeUID(xml::parseUIntText(*number));
    return number != nullptr;
}

void ParserState::enterMesh(const Ref<SceneNodeMesh>& mesh, const TiXmlElement& element) {
    const std::string name = mesh->getName().toStdString();
    if (!meshes.emplace(name, mesh).second)
        throwParserError("Mesh with name '" + name + "' already defined; mesh names must be unique. ",
                         element);
}

void parseUIDAndName(const TiXmlElement& element, SceneNode& node) {
    if (const TiXmlElement* const uid = xml::optionalChildElement(element, "uid"))
        node.setUID(SceneNodeUID(xml::parseUIntText(*uid)));
    if (const TiXmlElement* const name = xml::optionalChildElement(element, "name"))
        node.setName(String(xml::elementText(*name)));
}

} // namespace Quenza
