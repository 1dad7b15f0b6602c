// SPDX-License-Identifier: MIT
#include "reading/scene_report.h"

#include "foundation/exceptions.h"
#include "foundation/file_utils.h"
#include "reading/mesh_check.h"
#include "reading/xml_file.h"
#include "scene/mesh.h"

#include <cstdlib>
#include <cstring>
#include <tinyxml.h>
#include <unordered_map>

namespace Quenza {

namespace {

struct Node {
    const TiXmlElement* element;
    /// Of a mesh that was read: how many materials a model of it needs.
    u32 materials = 0;
};

bool parseUID(const TiXmlElement& parent, const char* child, u32& uid) {
    const TiXmlElement* const element = parent.FirstChildElement(child);
    const char* const text = element ? element->GetText() : nullptr;
    if (!text || *text < '0' || *text > '9') {
        return false;
    }
    char* end = nullptr;
    const unsigned long long value = std::strtoull(text, &end, 10);
    uid = static_cast<u32>(value);
    return *end == '\0' && value <= 0xFFFFFFFFull;
}

std::string childText(const TiXmlElement& parent, const char* child) {
    const TiXmlElement* const element = parent.FirstChildElement(child);
    const char* const text = element ? element->GetText() : nullptr;
    return text ? text : "";
}

bool isElement(const TiXmlElement& element, const char* name) {
    return std::strcmp(element.Value(), name) == 0;
}

/// Goes over one scene; each step appends to the summary.
class SceneCheck {
public:
    explicit SceneCheck(SceneSummary& summary) : summary_(summary) {}

    void run() {
        TiXmlDocument document;
        std::string fault;
        if (!loadXMLFile(summary_.path, document, fault)) {
            summary_.faults.push_back(fault);
            return;
        }
        const TiXmlElement* const scene = document.FirstChildElement("scene");
        if (!scene) {
            summary_.faults.push_back("the file has no \"scene\" element");
            return;
        }
        collectNodes(*scene);
        for (const TiXmlElement* element = scene->FirstChildElement(); element;
             element = element->NextSiblingElement()) {
            checkReferences(*element);
            checkFiles(*element);
        }
        static constexpr const char* SINGLE[] = {"renderer_settings", "tonemapping", "camera",
                                                 "background_settings", "metadata"};
        for (const char* const name : SINGLE) {
            const auto found = summary_.nodes.find(name);
            if (found != summary_.nodes.end() && found->second > 1) {
                summary_.faults.push_back("the scene has " + std::to_string(found->second) + " \"" + name +
                                          "\" nodes; one is allowed");
            }
        }
    }

private:
    void fault(const TiXmlElement& element, const std::string& text) {
        summary_.faults.push_back(placeOf(element) + element.Value() + " \"" + childText(element, "name") +
                                  "\": " + text);
    }

    void collectNodes(const TiXmlElement& scene) {
        for (const TiXmlElement* element = scene.FirstChildElement(); element;
             element = element->NextSiblingElement()) {
            ++summary_.nodes[element->Value()];
            Node node{element, 0};
            if (isElement(*element, "mesh")) {
                node.materials = readMesh(*element);
            }
            u32 uid = 0;
            if (!parseUID(*element, "uid", uid)) {
                fault(*element, "the node has no valid \"uid\"");
            } else if (!nodes_.emplace(uid, node).second) {
                fault(*element, "UID " + std::to_string(uid) + " is in use by another node");
            }
        }
    }

    std::string resolve(const std::string& path) const {
        return FileUtils::join(FileUtils::getDirectory(summary_.path), path).toStdString();
    }

    u32 readMesh(const TiXmlElement& element) {
        const TiXmlElement* const external = element.FirstChildElement("external");
        if (!external) {
            fault(element, "the mesh names no file");
            return 0;
        }
        MeshSummary mesh;
        mesh.name = childText(element, "name");
        mesh.path = childText(*external, "path");
        const std::string path = resolve(mesh.path);
        if (!FileUtils::fileExists(path)) {
            missing(element, mesh.path);
            return 0;
        }
        try {
            Mesh data;
            Mesh::readFromFile(path, data);
            data.endOfModel();
            const std::string unsound = checkMesh(data);
            if (!unsound.empty()) {
                fault(element, "'" + mesh.path + "': " + unsound);
                return 0;
            }
            summarise(data, mesh);
        } catch (const QuenzaException& excep) {
            fault(element, "'" + mesh.path + "': " + excep.what());
            return 0;
        }
        summary_.meshes.push_back(mesh);
        return mesh.materials;
    }

    static void summarise(const Mesh& data, MeshSummary& mesh) {
        mesh.vertices = data.vert_positions.size();
        mesh.triangles = data.triangles.size();
        mesh.quads = data.quads.size();
        mesh.uvs = data.num_uv_mappings ? data.uv_pairs.size() / data.num_uv_mappings : 0;
        mesh.materials = data.num_materials_referenced;
        mesh.bounds_min = data.aabb_min;
        mesh.bounds_max = data.aabb_max;
    }

    void missing(const TiXmlElement& element, const std::string& path) {
        summary_.missing_files.push_back(path);
        fault(element, "file '" + path + "' is missing");
    }

    const Node* expect(const TiXmlElement& element, const char* child,
                       std::initializer_list<const char*> types) {
        u32 uid = 0;
        if (!parseUID(element, child, uid)) {
            fault(element, std::string("\"") + child + "\" is missing or not a number");
            return nullptr;
        }
        return expectUID(element, child, uid, types);
    }

    const Node* expectUID(const TiXmlElement& element, const char* child, u32 uid,
                          std::initializer_list<const char*> types) {
        const auto found = nodes_.find(uid);
        if (found == nodes_.end()) {
            fault(element, std::string("\"") + child + "\" " + std::to_string(uid) + " leads to no node");
            return nullptr;
        }
        for (const char* const type : types) {
            if (isElement(*found->second.element, type)) {
                return &found->second;
            }
        }
        fault(element, std::string("\"") + child + "\" " + std::to_string(uid) + " leads to a \"" +
                           found->second.element->Value() + "\" node");
        return nullptr;
    }

    /// Number of material references.
    u32 checkMaterials(const TiXmlElement& element) {
        const TiXmlElement* const materials = element.FirstChildElement("materials");
        u32 count = 0;
        for (const TiXmlElement* child = materials ? materials->FirstChildElement() : nullptr; child;
             child = child->NextSiblingElement(), ++count) {
            u32 uid = 0;
            const char* const text = child->GetText();
            if (!text || std::sscanf(text, "%u", &uid) != 1) {
                fault(element, "a material reference isn't a number");
                continue;
            }
            expectUID(element, "material_uid", uid, {"material"});
        }
        return count;
    }

    void checkReferences(const TiXmlElement& element) {
        if (isElement(element, "model2")) {
            const Node* const geometry = expect(element, "geometry_uid", {"mesh", "parametric_surface"});
            const u32 materials = checkMaterials(element);
            if (geometry && geometry->materials > materials) {
                fault(element, "the mesh refers to " + std::to_string(geometry->materials) +
                                   " materials and the model has " + std::to_string(materials));
            }
            if (!element.FirstChildElement("rotation")) {
                fault(element, "\"rotation\" is missing");
            }
        } else if (isElement(element, "sphere")) {
            expect(element, "material_uid", {"material"});
        } else if (isElement(element, "camera")) {
            checkCamera(element);
        } else if (isElement(element, "section_plane")) {
            const TiXmlElement* const list = element.FirstChildElement("object_list");
            for (const TiXmlElement* uid = list ? list->FirstChildElement("uid") : nullptr; uid;
                 uid = uid->NextSiblingElement("uid")) {
                const char* const text = uid->GetText();
                expectUID(element, "object_list",
                          text ? static_cast<u32>(std::strtoul(text, nullptr, 10)) : 0, {"model2"});
            }
            return;
        } else {
            return;
        }
        if (!element.FirstChildElement("keyframe")) {
            fault(element, "there is no keyframe");
        }
    }

    void checkCamera(const TiXmlElement& element) {
        // Not "<=": the text may be "NaN".
        if (!(std::atof(childText(element, "aperture_radius").c_str()) > 0.0)) {
            fault(element, "\"aperture_radius\" must be greater than zero");
        }
        const std::string type = childText(element, "camera_type");
        if (type != "thin-lens-perspective" && type != "orthographic" && type != "spherical") {
            fault(element, "\"camera_type\" '" + type + "' is unknown");
        }
    }

    /// Textures, profiles and the like: every "path" below the node but a mesh's own.
    void checkFiles(const TiXmlElement& node) {
        if (isElement(node, "mesh")) {
            return;
        }
        const TiXmlNode* at = &node;
        while (at) {
            const TiXmlElement* const element = at->ToElement();
            if (element && isElement(*element, "path")) {
                const char* const path = element->GetText();
                if (path && !FileUtils::fileExists(resolve(path))) {
                    missing(node, path);
                }
            }
            const TiXmlNode* next = at->FirstChild();
            while (!next && at != &node) {
                next = at->NextSibling();
                at = next ? at : at->Parent();
            }
            at = next;
        }
    }

    SceneSummary& summary_;
    std::unordered_map<u32, Node> nodes_;
};

} // namespace

SceneSummary summariseScene(const std::string& path) {
    SceneSummary summary;
    summary.path = path;
    SceneCheck(summary).run();
    return summary;
}

QueueSummary summariseQueue(const std::string& path) {
    QueueSummary summary;
    summary.path = path;
    TiXmlDocument document;
    std::string fault;
    if (!loadXMLFile(path, document, fault)) {
        summary.faults.push_back(fault);
        return summary;
    }
    const TiXmlElement* const queue = document.FirstChildElement("render_queue");
    if (!queue) {
        summary.faults.push_back("the file has no \"render_queue\" element");
        return summary;
    }
    for (const TiXmlElement* element = queue->FirstChildElement("item"); element;
         element = element->NextSiblingElement("item")) {
        QueueItem item;
        item.scene_path = childText(*element, "scene_path");
        item.output_path = childText(*element, "output_path");
        item.halt_time = std::atof(childText(*element, "halt_time").c_str());
        item.halt_spp = std::atof(childText(*element, "halt_spp").c_str());
        item.seed = childText(*element, "seed");
        if (item.scene_path.empty()) {
            summary.faults.push_back(placeOf(*element) + "the item names no scene");
        }
        summary.items.push_back(item);
    }
    if (summary.items.empty()) {
        summary.faults.push_back("the queue has no item");
    }
    return summary;
}

} // namespace Quenza
