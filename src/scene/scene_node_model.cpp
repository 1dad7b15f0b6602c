// SPDX-License-Identifier: MIT
#include "scene/scene_node_model.h"

#include "foundation/exceptions.h"
#include "scene/file_dependency.h"
#include "scene/node_references.h"
#include "scene/ostream.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_visitor.h"
#include "scene/transform_path.h"
#include "scene/xml_elements.h"

namespace Quenza {

SceneNodeModel::SceneNodeModel() {
    name = "Model";
}

SceneNodeModel::~SceneNodeModel() = default;

Ref<SceneNode> SceneNodeModel::clone() const {
    const Ref<SceneNodeModel> copy = new SceneNodeModel;
    copyBaseFieldsTo(*copy);
    copy->keyframes = keyframes;
    copy->rotation = rotation;
    copy->scale = scale;
    copy->invisible_to_camera = invisible_to_camera;
    copy->ies_profiles = ies_profiles;
    copy->geometry_uid = geometry_uid;
    copy->geometry = geometry;
    copy->materials = materials;
    copy->material_uids = material_uids;
    copy->emission_scales = emission_scales;
    return copy;
}

void SceneNodeModel::rebindReferences(const Map<SceneNodeUID, Ref<SceneNode>>& nodes) {
    NodeReferences::rebindGeometry(geometry, nodes);
    for (Ref<SceneNodeMaterial>& material : materials)
        NodeReferences::rebindMaterial(material, nodes);
}

void SceneNodeModel::writeToXML(OStream& stream, u32 depth, const XMLWriteOptions& options) {
    if (!rotation)
        throw QuenzaException("Model '" + name + "' has no rotation.");
    writeOpenTag(stream, depth, "model2");
    writeUIDAndName(stream, depth + 1);
    writeUIntElement(stream, depth + 1, "geometry_uid",
                     NodeReferences::uidOf(geometry, geometry_uid).value());
    writeDoubleElement(stream, depth + 1, "scale", scale);
    if (invisible_to_camera)
        writeBoolElement(stream, depth + 1, "invisible_to_camera", true);
    writeOpenTag(stream, depth + 1, "rotation");
    rotation->writeToXML(stream, depth + 2);
    writeCloseTag(stream, depth + 1, "rotation");
    for (const KeyFrame& keyframe : keyframes)
        keyframe.writeToXML(stream, depth + 1);
    NodeReferences::writeMaterials(stream, depth + 1, materials);
    for (const Ref<IESProfile>& profile : ies_profiles)
        profile->writeToXML(stream, depth + 1, options);
    for (const Ref<EmissionScale>& emission_scale : emission_scales)
        emission_scale->writeToXML(stream, depth + 1);
    writeCloseTag(stream, depth, "model2");
}

void SceneNodeModel::doVisit(SceneVisitor& visitor) {
    switch (visitor.mode) {
    case SceneVisitor::BIND:
        bind();
        break;
    case SceneVisitor::COLLECT_DEPENDENCIES:
        collectDependencies(visitor);
        break;
    case SceneVisitor::UPDATE_DEPENDENCIES:
        updateDependencies(visitor);
        break;
    case SceneVisitor::BOUNDING_BOX:
        growBox(visitor);
        break;
    case SceneVisitor::OFFSET_UIDS:
        offsetUIDs(visitor);
        break;
    default:
        break;
    }
}

void SceneNodeModel::collectDependencies(SceneVisitor& visitor) {
    if (geometry)
        geometry->doVisit(visitor);
    for (const Ref<IESProfile>& profile : ies_profiles)
        visitor.dependencies.push_back(profile->path);
    for (const Ref<SceneNodeMaterial>& material : materials)
        if (material)
            material->doVisit(visitor);
}

void SceneNodeModel::updateDependencies(SceneVisitor& visitor) {
    for (const Ref<IESProfile>& profile : ies_profiles)
        if (firstVisit(visitor, *profile)) // several models may share a profile
            profile->path = getMappedPath(visitor.path_map, profile->path);
}

void SceneNodeModel::growBox(SceneVisitor& visitor) const {
    try {
        const TransformPath path(rotation ? rotation->getMatrix() : Matrix3d::identity(), scale, keyframes);
        const SceneNodeMesh* mesh_node = meshGeometry();
        if (!mesh_node || !mesh_node->mesh || mesh_node->mesh->vert_positions.empty())
            return;
        const Vec3f& min = mesh_node->mesh->aabb_min;
        const Vec3f& max = mesh_node->mesh->aabb_max;
        path.growVisitorBox(visitor, {min.x, min.y, min.z}, {max.x, max.y, max.z});
    } catch (const TransformPathExcep& e) {
        throw QuenzaException(e.message());
    }
}

void SceneNodeModel::offsetUIDs(SceneVisitor& visitor) {
    visitor.offsetUID(uid);
    visitor.offsetUID(geometry_uid);
    for (SceneNodeUID& material_uid : material_uids)
        visitor.offsetUID(material_uid);
}

Vector<SceneNodeUID> SceneNodeModel::getReferencedUIDs() const {
    Vector<SceneNodeUID> uids;
    uids.push_back(NodeReferences::uidOf(geometry, geometry_uid));
    NodeReferences::appendMaterialUIDs(uids, materials, material_uids);
    return uids;
}

bool SceneNodeModel::doIsEqual(const SceneNode& other) const {
    if (!SceneNode::doIsEqual(other))
        return false;
    const SceneNodeModel* model = dynamic_cast<const SceneNodeModel*>(&other);
    if (!model)
        return false;
    return !geometry || !model->geometry || geometry->isEqual(*model->geometry);
}

} // namespace Quenza
