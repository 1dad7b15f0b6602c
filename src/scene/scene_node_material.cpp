// SPDX-License-Identifier: MIT
#include "scene/scene_node_material.h"

#include "foundation/exceptions.h"
#include "scene/material_binder.h"
#include "scene/scene_node_root.h"
#include "scene/scene_node_scatter.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

#include <algorithm>
#include <cstdio>
#include <utility>
#include <vector>

namespace Quenza {

namespace {

struct Held {
    Ref<Material> material;
    Vector<Ref<SceneNodeScatter>> scatter_nodes;
};

/// Lets go of what a node held. That may be the last hold on further nodes: a long chain of them would
/// exhaust the stack if each was destroyed within the destructor of the one before, so nested calls queue up
/// for the outermost.
void release(Held held) {
    thread_local std::vector<Held>* pending = nullptr;
    if (pending) {
        pending->push_back(std::move(held));
        return;
    }
    std::vector<Held> queue;
    pending = &queue;
    queue.push_back(std::move(held));
    while (!queue.empty()) {
        const Held next = std::move(queue.back());
        queue.pop_back();
    }
    pending = nullptr;
}

} // namespace

SceneNodeMaterial::SceneNodeMaterial() = default;

SceneNodeMaterial::SceneNodeMaterial(const Ref<Material>& material_) : material(material_) {}

SceneNodeMaterial::~SceneNodeMaterial() {
    release({std::move(material), std::move(scatter_nodes)});
}

void SceneNodeMaterial::setName(const String& new_name) {
    (material ? material->name : name) = new_name;
}

const String& SceneNodeMaterial::getName() const {
    return material ? material->name : name;
}

Ref<SceneNode> SceneNodeMaterial::clone() const {
    Ref<SceneNodeMaterial> copy = new SceneNodeMaterial(material);
    copyBaseFieldsTo(*copy);
    return copy;
}

void SceneNodeMaterial::rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& nodes) {
    if (material)
        material->rebindReferences(nodes);
    for (Ref<SceneNodeScatter>& scatter : scatter_nodes)
        rebindReference(nodes, scatter);
}

void SceneNodeMaterial::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) {
    writeOpenTag(stream, depth, "material");
    if (options.write_uids)
        writeUIntElement(stream, depth + 1, "uid", uid.value());
    writeStringElement(stream, depth + 1, "name", getName());
    if (material)
        material->writeFrameToXML(stream, depth + 1, options);
    for (const Ref<SceneNodeScatter>& scatter : scatter_nodes) {
        writeOpenTag(stream, depth + 1, "scatter_uids");
        writeUIntElement(stream, depth + 2, "uid", scatter->getUID().value());
        writeCloseTag(stream, depth + 1, "scatter_uids");
    }
    writeCloseTag(stream, depth, "material");
}

void SceneNodeMaterial::doVisit(SceneVisitor& visitor) {
    if (visitor.mode == SceneVisitor::OFFSET_UIDS) {
        visitor.offsetUID(uid);
        for (SceneNodeUID& scatter_uid : scatter_uids)
            visitor.offsetUID(scatter_uid);
    } else if (visitor.mode == SceneVisitor::BIND && !scatter_uids.empty()) {
        bindScatterNodes();
    }
    if (material)
        material->bind(visitor, this);
}

void SceneNodeMaterial::bindScatterNodes() {
    SceneNodeRoot* root = getRoot();
    if (!root)
        throw QuenzaException("While binding scatter node: root node was NULL");
    for (const SceneNodeUID scatter_uid : scatter_uids) {
        SceneNode* node = root->getChildByUID(scatter_uid);
        if (!node)
            throw QuenzaException("While processing node '" + getName() + "', UID " + uid.toString() +
                                  ":  Failed to find scatter node for UID " + scatter_uid.toString());
        SceneNodeScatter* scatter = dynamic_cast<SceneNodeScatter*>(node);
        if (!scatter)
            throw QuenzaException("Referenced node did not have type SceneNodeScatter");
        scatter->material_uid = uid;
        if (std::find(scatter_nodes.begin(), scatter_nodes.end(), scatter) == scatter_nodes.end())
            scatter_nodes.push_back(scatter);
    }
}

u32 SceneNodeMaterial::getHighestLayerIndex() const {
    return material ? material->getLayer() : 0;
}

bool SceneNodeMaterial::usesNode(SceneNode* node) const {
    return material && material->usesNode(node);
}

Vector<SceneNodeUID> SceneNodeMaterial::getReferencedUIDs() const {
    Vector<SceneNodeUID> uids;
    if (material)
        uids = material->getReferencedUIDs();
    if (scatter_nodes.empty())
        uids.append(scatter_uids.data(), scatter_uids.size());
    for (const Ref<SceneNodeScatter>& scatter : scatter_nodes)
        uids.push_back(scatter->getUID());
    return uids;
}

bool SceneNodeMaterial::doIsEqual(const SceneNode& other) const {
    if (!SceneNode::doIsEqual(other))
        return false;
    std::fputs("TODO: IMPLEMENT SceneNodeMaterial::doIsEqual()\n", stdout);
    return true;
}

} // namespace Quenza
