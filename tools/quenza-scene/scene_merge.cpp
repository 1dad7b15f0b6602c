// SPDX-License-Identifier: MIT
#include "tools/quenza-scene/scene_merge.h"

#include "reading/node_elements.h"
#include "reading/xml_document.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_visitor.h"

#include <algorithm>
#include <map>
#include <stdexcept>
#include <string_view>
#include <tinyxml.h>

namespace scene_tool {

namespace {

using namespace Quenza;

constexpr u32 SINGLE_TYPES[] = {NODE_CAMERA, NODE_RENDER_SETTINGS, NODE_TONEMAPPING, NODE_BACKGROUND_SETTINGS,
                                NODE_METADATA};

/// Shorthands that are read as background settings.
constexpr std::string_view BACKGROUND_SHORTHANDS[] = {"skylight", "background", "env_map"};

u32 highestUID(const SceneNodeRoot& root) {
    u32 highest = 0;
    for (const Ref<SceneNode>& node : root.getChildren())
        if (node->getUID().isValid())
            highest = std::max(highest, node->getUID().value());
    return highest;
}

void offsetUIDs(SceneNodeRoot& root, u32 offset) {
    if (highestUID(root) >= SceneNodeUID::INVALID_VALUE - offset)
        throw std::runtime_error("the UIDs of both scenes don't fit into one: " + std::to_string(offset) +
                                 " and " + std::to_string(highestUID(root)) + " are the highest");
    SceneVisitor moving;
    moving.mode = SceneVisitor::OFFSET_UIDS;
    moving.uid_offset = offset;
    root.visitAll(moving);
}

std::string titleOf(const SceneNode& node) {
    const std::string name = node.getName().toStdString();
    return std::string(nodeElementName(node.getType())) + (name.empty() ? "" : " \"" + name + "\"");
}

/// Names of meshes are unique, or the scene can't be read again.
class MeshNames {
public:
    explicit MeshNames(const SceneNodeRoot& root) {
        for (const Ref<SceneNode>& node : root.getChildren())
            if (node->getType() == NODE_MESH)
                names_.insert(node->getName().toStdString());
    }
    /// True when the node had to get another name.
    bool enter(SceneNode& node) {
        const std::string wanted = node.getName().toStdString();
        std::string name = wanted;
        for (u32& number = numbers_.try_emplace(wanted, 2).first->second; !names_.insert(name).second;)
            name = wanted + " " + std::to_string(number++);
        node.setName(name);
        return name != wanted;
    }

private:
    std::set<std::string> names_;
    std::map<std::string, u32> numbers_; ///< The next to try behind a name.
};

} // namespace

std::set<u32> ownSingleNodes(const std::string& path) {
    XMLDocument document;
    document.loadDocument(path);
    std::set<u32> own;
    for (const TiXmlElement* element = document.rootElement().FirstChildElement(); element;
         element = element->NextSiblingElement()) {
        const std::string_view name = element->Value();
        if (name == "include")
            return {std::begin(SINGLE_TYPES), std::end(SINGLE_TYPES)};
        if (std::find(std::begin(BACKGROUND_SHORTHANDS), std::end(BACKGROUND_SHORTHANDS), name) !=
            std::end(BACKGROUND_SHORTHANDS))
            own.insert(NODE_BACKGROUND_SETTINGS);
        for (const u32 type : SINGLE_TYPES)
            if (name == nodeElementName(type))
                own.insert(type);
    }
    return own;
}

std::vector<std::string> mergeScenes(SceneNodeRoot& a, SceneNodeRoot& b, const std::set<u32>& own) {
    std::vector<std::string> notes;
    offsetUIDs(b, highestUID(a));
    MeshNames names(a);
    for (const Ref<SceneNode>& node : b.getChildren()) {
        const std::string title = titleOf(*node);
        if (isSingleNodeType(node->getType())) {
            Ref<SceneNode> present;
            for (const Ref<SceneNode>& other : a.getChildren())
                if (other->getType() == node->getType())
                    present = other;
            if (present && own.contains(node->getType())) {
                notes.push_back("left out of B: " + title + ", A has its own");
                continue;
            }
            if (present)
                a.removeChild(present);
        }
        if (node->getType() == NODE_MESH && names.enter(*node))
            notes.push_back("renamed of B: " + title + " to \"" + node->getName().toStdString() + "\"");
        a.addChild(node);
    }
    const auto* const settings = static_cast<const SceneNodeRenderSettings*>(a.getRenderSettingsPointer());
    const u64 layers = settings ? settings->getNumLayers() : 0;
    if (layers != 0 && a.highestLayerIndexInTree() >= layers)
        notes.push_back("the settings have " + std::to_string(layers) +
                        " light layers, and materials use layer " +
                        std::to_string(a.highestLayerIndexInTree()) + " (counted from 0)");
    return notes;
}

} // namespace scene_tool
