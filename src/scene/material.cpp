// SPDX-License-Identifier: MIT
#include "scene/material.h"

#include "scene/file_dependency.h"
#include "scene/material_binder.h"
#include "scene/material_writer.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_medium.h"
#include "scene/xml_elements.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace Quenza {

namespace {

class HighestLayer : public MaterialFields {
public:
    void layer(const char*, i32& index) override { highest = std::max(highest, index); }

    i32 highest = 0;
};

class ReferencedUIDs : public MaterialFields {
public:
    void material(const ReferenceElements&, Ref<SceneNodeMaterial>& node, SceneNodeUID& uid) override {
        add(node ? node->getUID() : uid);
    }
    void medium(Ref<SceneNodeMedium>& node, SceneNodeUID& uid) override { add(node ? node->getUID() : uid); }

    Vector<SceneNodeUID> uids;

private:
    void add(SceneNodeUID uid) {
        if (uid.isValid())
            uids.push_back(uid);
    }
};

class ReferencedMaterials : public MaterialFields {
public:
    void material(const ReferenceElements&, Ref<SceneNodeMaterial>& node, SceneNodeUID&) override {
        if (node)
            nodes.push_back(node.getPointer());
    }

    std::vector<SceneNodeMaterial*> nodes;
};

class DisplacementFinder : public MaterialFields {
public:
    void displacement(Ref<DisplacementParam>& param) override { found = found || param; }

    bool found = false;
};

} // namespace

u32 Material::getLayer() {
    HighestLayer layers;
    describe(layers);
    return static_cast<u32>(layers.highest);
}

void Material::bind(SceneVisitor& visitor, SceneNodeMaterial* owner) {
    if (!firstVisit(visitor, *this))
        return;
    for (Texture& texture : textures)
        texture.visit(visitor);
    if (shared_shader_info)
        shared_shader_info->visit(visitor);
    MaterialBinder binder(visitor, owner, kind_.class_name);
    describe(binder);
}

bool Material::anyUsedNode(const std::function<bool(SceneNodeMaterial&)>& test) {
    std::vector<Material*> open{this};
    std::unordered_set<const Material*> entered{this};
    while (!open.empty()) {
        ReferencedMaterials references;
        Material* current = open.back();
        open.pop_back();
        current->describe(references);
        for (SceneNodeMaterial* node : references.nodes) {
            if (test(*node))
                return true;
            Material* next = node->material.getPointer();
            if (next && entered.insert(next).second)
                open.push_back(next);
        }
    }
    return false;
}

bool Material::usesNode(SceneNode* node) {
    return anyUsedNode([node](const SceneNodeMaterial& used) { return &used == node; });
}

Vector<SceneNodeUID> Material::getReferencedUIDs() {
    ReferencedUIDs references;
    describe(references);
    return references.uids;
}

bool Material::movesSurface() {
    DisplacementFinder finder;
    describe(finder);
    return finder.found;
}

bool Material::hasDisplacement() {
    return movesSurface() || anyUsedNode([](const SceneNodeMaterial& used) {
               return used.material && used.material->movesSurface();
           });
}

void Material::writeBodyToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) {
    MaterialWriter writer(stream, depth + 1, options);
    describe(writer);
}

void Material::writeFrameToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) {
    const std::string element = getTypeName().toStdString();
    writeOpenTag(stream, depth, element.c_str());
    for (const Texture& texture : textures)
        texture.writeToXML(stream, depth + 1, options);
    if (shared_shader_info && !shared_shader_info->isEmpty()) {
        writeOpenTag(stream, depth + 1, "shared_shader_info");
        shared_shader_info->writeToXML(stream, depth + 1, options);
        writeCloseTag(stream, depth + 1, "shared_shader_info");
    }
    writeBodyToXML(stream, depth, options);
    writeCloseTag(stream, depth, element.c_str());
    if (backface_emit)
        writeBoolElement(stream, depth, "backface_emit", true);
    if (shadow_catcher)
        writeBoolElement(stream, depth, "shadow_catcher", true);
}

void Material::rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& map) {
    MaterialRebinder rebinder(map);
    describe(rebinder);
}

} // namespace Quenza
