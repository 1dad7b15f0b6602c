// SPDX-License-Identifier: MIT
#include "scene/node_references.h"

#include "foundation/exceptions.h"
#include "scene/ostream.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_root.h"
#include "scene/xml_elements.h"

namespace Quenza::NodeReferences {

namespace {

/// Opening of a message about a node.
String whileProcessing(const SceneNode& node) {
    return "While processing node '" + node.getName() + "', UID " + node.getUID().toString() + ":  ";
}

SceneNodeRoot& requireRoot(SceneNode& owner) {
    SceneNodeRoot* root = owner.getRoot();
    if (!root)
        throw QuenzaException("While binding geometry: root node was NULL");
    return *root;
}

bool isGeometryType(u32 type) {
    return type == NODE_MESH || type == NODE_PARAMETRIC_SURFACE;
}

SceneNodeMaterial* findMaterial(SceneNode& owner, SceneNodeRoot& root, SceneNodeUID uid) {
    SceneNode* node = root.getChildByUID(uid);
    if (!node)
        throw QuenzaException(whileProcessing(owner) + "Failed to find material for UID " + uid.toString());
    if (node->getType() != NODE_MATERIAL)
        throw QuenzaException(whileProcessing(owner) + "Referenced node (UID " + uid.toString() +
                              ") did not have type SceneNodeMaterial");
    return static_cast<SceneNodeMaterial*>(node);
}

const Ref<SceneNode>* replacementOf(const SceneNode* bound, const Map<SceneNodeUID, Ref<SceneNode>>& nodes) {
    const Ref<SceneNode>* replacement = bound ? nodes.find(bound->getUID()) : nullptr;
    return replacement && *replacement ? replacement : nullptr;
}

} // namespace

SceneNodeUID uidOf(const Ref<SceneNode>& bound, SceneNodeUID stored) {
    return bound ? bound->getUID() : stored;
}

SceneNodeUID uidOf(const Ref<SceneNodeMaterial>& bound, SceneNodeUID stored) {
    return bound ? bound->getUID() : stored;
}

void writeMaterials(OStream& stream, u32 depth, const Vector<Ref<SceneNodeMaterial>>& materials) {
    writeOpenTag(stream, depth, "materials");
    for (const Ref<SceneNodeMaterial>& material : materials)
        writeUIntElement(stream, depth + 1, "material_uid", uidOf(material, SceneNodeUID::INVALID).value());
    writeCloseTag(stream, depth, "materials");
}

void bindGeometry(SceneNode& owner, Ref<SceneNode>& geometry, SceneNodeUID geometry_uid) {
    if (geometry)
        return;
    SceneNode* node = requireRoot(owner).getChildByUID(geometry_uid);
    if (!node)
        throw QuenzaException(whileProcessing(owner) + "Failed to find geometry for UID " +
                              geometry_uid.toString());
    if (!isGeometryType(node->getType()))
        throw QuenzaException(
            "Referenced node did not have type SceneNodeMesh or SceneNodeParametricSurface");
    geometry = node;
}

void bindMaterials(SceneNode& owner, Vector<Ref<SceneNodeMaterial>>& materials,
                   const Vector<SceneNodeUID>& material_uids) {
    if (materials.empty())
        materials.resize(material_uids.size());
    for (u64 i = 0; i < materials.size(); ++i)
        if (!materials[i])
            materials[i] = findMaterial(owner, requireRoot(owner),
                                        i < material_uids.size() ? material_uids[i] : SceneNodeUID::INVALID);
}

void rebindGeometry(Ref<SceneNode>& geometry, const Map<SceneNodeUID, Ref<SceneNode>>& nodes) {
    const Ref<SceneNode>* replacement = replacementOf(geometry.getPointer(), nodes);
    if (replacement && isGeometryType((*replacement)->getType()))
        geometry = *replacement;
}

void rebindMaterial(Ref<SceneNodeMaterial>& material, const Map<SceneNodeUID, Ref<SceneNode>>& nodes) {
    const Ref<SceneNode>* replacement = replacementOf(material.getPointer(), nodes);
    if (replacement && (*replacement)->getType() == NODE_MATERIAL)
        material = static_cast<SceneNodeMaterial*>(replacement->getPointer());
}

void appendMaterialUIDs(Vector<SceneNodeUID>& out, const Vector<Ref<SceneNodeMaterial>>& materials,
                        const Vector<SceneNodeUID>& material_uids) {
    if (materials.empty())
        out.append(material_uids.data(), material_uids.size());
    for (u64 i = 0; i < materials.size(); ++i)
        out.push_back(
            uidOf(materials[i], i < material_uids.size() ? material_uids[i] : SceneNodeUID::INVALID));
}

} // namespace Quenza::NodeReferences
