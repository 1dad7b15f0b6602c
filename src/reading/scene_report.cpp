// SPDX-License-Identifier: MIT
#include "reading/scene_report.h"

#include "foundation/file_utils.h"
#include "foundation/platform.h"
#include "foundation/string_utils.h"
#include "reading/mesh_check.h"
#include "reading/model_loader.h"
#include "reading/node_check.h"
#include "reading/node_elements.h"
#include "reading/node_numbering.h"
#include "reading/scene_parser.h"
#include "reading/texture_uses.h"
#include "reading/xml_document.h"
#include "reading/xml_values.h"
#include "scene/material.h"
#include "scene/mesh_loader.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_visitor.h"

#include <algorithm>
#include <map>
#include <new>
#include <set>
#include <tinyxml.h>

namespace Quenza {

namespace {

/// Where in the scene file a node comes from; for nodes of included files the `include`.
struct Place {
    int row = 0;
    int column = 0;

    std::string text() const {
        return "line " + std::to_string(row) + ", column " + std::to_string(column) + ": ";
    }
};

std::string oneLine(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

/// What binding a model asks of its mesh: names and number of materials, without the arrays.
Ref<Mesh> withoutArrays(const Mesh& mesh) {
    const Ref<Mesh> light = new Mesh;
    light->used_materials = mesh.used_materials;
    light->num_materials_referenced = mesh.num_materials_referenced;
    return light;
}

/// Goes over one scene; each step appends to the summary.
class SceneCheck {
public:
    SceneCheck(SceneSummary& summary, const ImageProbe& probe)
        : summary_(summary), probe_(probe), base_dir_(FileUtils::getDirectory(summary.path)),
          root_(new SceneNodeRoot) {}

    void run() {
        XMLDocument document;
        try {
            document.loadDocument(summary_.path);
            parser_.setScenePath(summary_.path);
            const TiXmlElement& scene = document.rootElement();
            if (scene.ValueStr() != "scene")
                throw QuenzaModelParserExcep("Invalid root element '" + scene.ValueStr() + "'");
            addNumberedNodes(*root_, parseElements(scene));
        } catch (const MessageExcep& excep) {
            summary_.faults.push_back(oneLine(excep.what()));
            return;
        }
        checkUIDs();
        const Vector<Ref<SceneNode>>& nodes = root_->getChildren();
        // Models look at the materials of their meshes.
        for (u64 i = 0; i < nodes.size(); ++i)
            if (nodes[i]->getType() == NODE_MESH)
                readMesh(static_cast<SceneNodeMesh&>(*nodes[i]), i);
        for (u64 i = 0; i < nodes.size(); ++i)
            checkNode(*nodes[i], i);
        summarise();
    }

private:
    void fault(u64 index, const std::string& text) {
        const SceneNode& node = *root_->getChildren()[index];
        summary_.faults.push_back(oneLine(places_[index].text() + nodeElementName(node.getType()) + " \"" +
                                          node.getName().toStdString() + "\": " + text));
    }

    NodeList parseElements(const TiXmlElement& scene) {
        NodeList nodes;
        for (const TiXmlElement* element = scene.FirstChildElement(); element;
             element = element->NextSiblingElement()) {
            try {
                NodeList of_element;
                parser_.parseElement(*element, of_element);
                nodes.append(of_element.data(), of_element.size());
            } catch (const MessageExcep& excep) {
                summary_.faults.push_back(oneLine(excep.what()));
                ++summary_.unread_elements;
                noteUnread(*element);
            }
            places_.resize(nodes.size(), {element->Row(), element->Column()});
        }
        return nodes;
    }

    /// References to an element that can't be read are no fault of their own.
    void noteUnread(const TiXmlElement& element) {
        try {
            const u32 uid = SceneParseUtils::parseOptionalUInt(element, "uid", SceneNodeUID::INVALID_VALUE);
            if (uid != SceneNodeUID::INVALID_VALUE)
                unread_uids_.insert(uid);
        } catch (const SceneParseUtils::SceneParseUtilsExcep&) {
            // It has no UID that anybody could name.
        }
    }

    void checkUIDs() {
        std::map<u32, u64> owners;
        std::map<u32, u64> counts;
        const Vector<Ref<SceneNode>>& nodes = root_->getChildren();
        for (u64 i = 0; i < nodes.size(); ++i) {
            const u32 uid = nodes[i]->getUID().value();
            const auto [owner, is_new] = owners.emplace(uid, i);
            if (!is_new)
                fault(i, "UID " + toString(uid) + " is in use by " +
                             nodeElementName(nodes[owner->second]->getType()) + " \"" +
                             nodes[owner->second]->getName().toStdString() + "\"");
            // Several settings are layers of one.
            if (isSingleNodeType(nodes[i]->getType()) && nodes[i]->getType() != NODE_RENDER_SETTINGS &&
                ++counts[nodes[i]->getType()] == 2)
                fault(i, "this is the second node of its type; a scene has one at most");
        }
    }

    std::string resolve(const String& path) const { return FileUtils::join(base_dir_, path).toStdString(); }

    void readMesh(SceneNodeMesh& node, u64 index) {
        const std::string path = node.path.toStdString();
        const std::string file = path.empty() ? "" : "'" + path + "': ";
        try {
            if (!node.mesh) {
                if (!FileUtils::fileExists(resolve(node.path)) ||
                    PlatformUtils::isSpecialFile(resolve(node.path)))
                    return; // told with the other files
                const Ref<Mesh> mesh = new Mesh;
                getMeshLoader()(resolve(node.path), *mesh, node.scale);
                node.mesh = mesh;
            }
            node.mesh->endOfModel();
            const std::string unsound = checkMesh(*node.mesh);
            if (unsound.empty())
                addSummary(node);
            else
                fault(index, file + unsound);
            node.mesh = withoutArrays(*node.mesh);
        } catch (const MessageExcep& excep) {
            fault(index, file + excep.what());
        } catch (const std::bad_alloc&) {
            fault(index, file + "there isn't enough memory for it");
        }
    }

    void addSummary(const SceneNodeMesh& node) {
        MeshSummary mesh = summariseMesh(*node.mesh);
        mesh.name = node.getName().toStdString();
        mesh.path = node.path.toStdString();
        summary_.meshes.push_back(mesh);
    }

    void checkNode(SceneNode& node, u64 index) {
        for (const std::string& text : NodeCheck(*root_, unread_uids_).faultsOf(node))
            fault(index, text);
        if (node.getType() == NODE_MATERIAL)
            checkTextures(static_cast<const SceneNodeMaterial&>(node), index);
        SceneVisitor collecting;
        collecting.mode = SceneVisitor::COLLECT_DEPENDENCIES;
        node.doVisit(collecting);
        for (const String& dependency : collecting.dependencies)
            checkFile(dependency.toStdString(), index);
    }

    void checkTextures(const SceneNodeMaterial& node, u64 index) {
        if (!node.material)
            return;
        for (const TextureUse& use : textureUses(*node.material)) {
            const std::string channel = use.channels.empty() ? "" : use.channels + ": ";
            if (use.path.empty())
                fault(index, channel + "a texture names no file");
            else if (checkFile(use.path, index, channel) && probe_)
                probeImage(use.path, index, channel);
        }
    }

    void probeImage(const std::string& path, u64 index, const std::string& channel) {
        const std::string text = probe_(resolve(path));
        if (!text.empty())
            fault(index, channel + "image '" + path + "' can't be read: " + text);
    }

    /// Several nodes may name a file; the first is told, behind `where`. True for a sound one at its first
    /// time.
    bool checkFile(const std::string& path, u64 index, const std::string& where = "") {
        if (path.empty() || !known_files_.insert(path).second)
            return false;
        summary_.files.push_back(path);
        if (!FileUtils::fileExists(resolve(path))) {
            summary_.missing_files.push_back(path);
            fault(index, where + "file '" + path + "' is missing");
            return false;
        }
        if (PlatformUtils::isSpecialFile(resolve(path))) {
            fault(index, where + "'" + path + "' is no ordinary file");
            return false;
        }
        return true;
    }

    void summarise() {
        for (const Ref<SceneNode>& node : root_->getChildren()) {
            ++summary_.nodes[nodeElementName(node->getType())];
            if (node->getType() != NODE_MATERIAL)
                continue;
            const auto& material = static_cast<const SceneNodeMaterial&>(*node);
            summary_.materials.push_back(
                {node->getName().toStdString(), node->getUID().value(),
                 material.material ? material.material->getTypeName().toStdString() : std::string()});
        }
    }

    SceneSummary& summary_;
    const ImageProbe& probe_;
    String base_dir_;
    QuenzaModelParser parser_;
    Ref<SceneNodeRoot> root_;
    std::vector<Place> places_; ///< Of the root's children.
    std::set<u32> unread_uids_;
    std::set<std::string> known_files_;
};

} // namespace

SceneSummary summariseScene(const std::string& path, const ImageProbe& probe) {
    SceneSummary summary;
    summary.path = path;
    installModelLoader();
    SceneCheck(summary, probe).run();
    return summary;
}

std::vector<std::string> faultsOfExtraSettings(const std::string& text) {
    std::vector<std::string> faults;
    if (text.empty())
        return faults;
    try {
        for (const std::string& fault : imageSizeFaults(*QuenzaModelParser().readExtraSettings(text)))
            faults.push_back("Argument of '--settings': " + fault);
    } catch (const MessageExcep& excep) {
        faults.push_back(oneLine(excep.what()));
    }
    return faults;
}

} // namespace Quenza
