// SPDX-License-Identifier: MIT
#include "scene/scene_node_scatter.h"

#include "scene/node_references.h"
#include "scene/ostream.h"
#include "scene/scene_node_material.h"
#include "scene/scene_visitor.h"
#include "scene/xml_elements.h"

#include <cstdio>

namespace Quenza {

SceneNodeScatter::SceneNodeScatter() = default;

SceneNodeScatter::~SceneNodeScatter() = default;

Ref<SceneNode> SceneNodeScatter::clone() const {
    std::printf("SceneNodeScatter::clone() not yet implemented");
    return nullptr;
}

void SceneNodeScatter::rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& nodes) {
    NodeReferences::rebindGeometry(geometry, nodes);
    for (Ref<SceneNodeMaterial>& material : materials)
        NodeReferences::rebindMaterial(material, nodes);
}

void SceneNodeScatter::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) {
    writeOpenTag(stream, depth, "scatter");
    writeUIDAndName(stream, depth + 1);
    writeOpenTag(stream, depth + 1, "shader");
    writeStringElement(stream, depth + 2, "shader", shader);
    writeCloseTag(stream, depth + 1, "shader");
    writeDoubleElement(stream, depth + 1, "density", density);
    writeUIntElement(stream, depth + 1, "seed", seed);
    writeUIntElement(stream, depth + 1, "geometry_uid",
                     NodeReferences::uidOf(geometry, geometry_uid).value());
    NodeReferences::writeMaterials(stream, depth + 1, materials);
    writeUIntElement(stream, depth + 1, "target_object_uid", target_object_uid.value());
    writeCloseTag(stream, depth, "scatter");
}

void SceneNodeScatter::doVisit(SceneVisitor& visitor) {
    if (visitor.mode == SceneVisitor::BIND) {
        NodeReferences::bindGeometry(*this, geometry, geometry_uid);
        NodeReferences::bindMaterials(*this, materials, material_uids);
    } else if (visitor.mode == SceneVisitor::OFFSET_UIDS) {
        visitor.offsetUID(uid);
    }
}

Vector<SceneNodeUID> SceneNodeScatter::getReferencedUIDs() const {
    Vector<SceneNodeUID> uids;
    uids.push_back(NodeReferences::uidOf(geometry, geometry_uid));
    NodeReferences::appendMaterialUIDs(uids, materials, material_uids);
    uids.push_back(target_object_uid);
    return uids;
}

bool SceneNodeScatter::doIsEqual(const SceneNode& other) const {
    if (!SceneNode::doIsEqual(other))
        return false;
    std::printf("TODO: IMPLEMENT SceneNodeScatter::doIsEqual()\n");
    return true;
}

} // namespace Quenza
