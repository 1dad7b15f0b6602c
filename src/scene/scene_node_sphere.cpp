// SPDX-License-Identifier: MIT
#include "scene/scene_node_sphere.h"

#include "foundation/exceptions.h"
#include "scene/node_references.h"
#include "scene/ostream.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_root.h"
#include "scene/scene_visitor.h"
#include "scene/transform_path.h"
#include "scene/xml_elements.h"

#include <cstdio>

namespace Quenza {

SceneNodeSphere::SceneNodeSphere() = default;

SceneNodeSphere::~SceneNodeSphere() = default;

Ref<SceneNode> SceneNodeSphere::clone() const {
    const Ref<SceneNodeSphere> copy = new SceneNodeSphere;
    copyBaseFieldsTo(*copy);
    copy->keyframes = keyframes;
    copy->radius = radius;
    copy->material_uid = material_uid;
    return copy;
}

void SceneNodeSphere::rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& nodes) {
    NodeReferences::rebindMaterial(material, nodes);
}

void SceneNodeSphere::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions&) {
    writeOpenTag(stream, depth, "sphere");
    writeUIDAndName(stream, depth + 1);
    for (const KeyFrame& keyframe : keyframes)
        keyframe.writeToXML(stream, depth + 1);
    writeDoubleElement(stream, depth + 1, "radius", radius);
    writeUIntElement(stream, depth + 1, "material_uid",
                     NodeReferences::uidOf(material, material_uid).value());
    writeCloseTag(stream, depth, "sphere");
}

void SceneNodeSphere::doVisit(SceneVisitor& visitor) {
    switch (visitor.mode) {
    case SceneVisitor::BIND:
        bind();
        break;
    case SceneVisitor::COLLECT_DEPENDENCIES:
        if (material)
            material->doVisit(visitor);
        break;
    case SceneVisitor::BOUNDING_BOX:
        growBox(visitor);
        break;
    case SceneVisitor::OFFSET_UIDS:
        visitor.offsetUID(uid);
        visitor.offsetUID(material_uid);
        break;
    default:
        break;
    }
}

void SceneNodeSphere::bind() {
    if (material)
        return;
    SceneNodeRoot* root = getRoot();
    if (!root)
        throw QuenzaException("While binding sphere: root node was NULL");
    material = root->getMaterial(material_uid);
}

void SceneNodeSphere::growBox(SceneVisitor& visitor) const {
    try {
        TransformPath(Matrix3d::identity(), 1.0, keyframes)
            .growVisitorBox(visitor, {-radius, -radius, -radius}, {radius, radius, radius});
    } catch (const TransformPathExcep& e) {
        throw QuenzaException(e.message());
    }
}

bool SceneNodeSphere::usesNode(SceneNode* node) const {
    return node && material == node;
}

Vector<SceneNodeUID> SceneNodeSphere::getReferencedUIDs() const {
    return {NodeReferences::uidOf(material, material_uid)};
}

bool SceneNodeSphere::doIsEqual(const SceneNode& other) const {
    if (!SceneNode::doIsEqual(other))
        return false;
    std::printf("TODO: IMPLEMENT SceneNodeSphere::doIsEqual()\n");
    return true;
}

} // namespace Quenza
