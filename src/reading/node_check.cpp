// SPDX-License-Identifier: MIT
#include "reading/node_check.h"

#include "foundation/exceptions.h"
#include "foundation/string_utils.h"
#include "reading/node_elements.h"
#include "scene/node_references.h"
#include "scene/scene_node_camera.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_scatter.h"
#include "scene/scene_node_section_plane.h"
#include "scene/scene_node_sphere.h"
#include "scene/scene_visitor.h"

#include <algorithm>

namespace Quenza {

std::vector<std::string> imageSizeFaults(const SceneNodeRenderSettings& settings) {
    std::vector<std::string> faults;
    for (const char* const side : {"width", "height"}) {
        const i32 pixels = settings.settings.contains(side) ? settings.getInt(side) : 1;
        if (pixels < 1 || pixels > MAX_IMAGE_SIDE)
            faults.push_back(std::string("\"") + side + "\" " + toString(pixels) +
                             " is out of bounds: an image has 1 to " + toString(MAX_IMAGE_SIDE) +
                             " pixels a side");
    }
    return faults;
}

std::vector<std::string> NodeCheck::faultsOf(SceneNode& node) {
    faults_.clear();
    bindable_ = true;
    checkReferences(node);
    if (bindable_)
        bind(node);
    checkMotion(node);
    return std::move(faults_);
}

void NodeCheck::checkReference(const char* element, SceneNodeUID uid, std::initializer_list<u32> types) {
    if (unread_uids_.contains(uid.value())) {
        bindable_ = false;
        return;
    }
    const SceneNode* const found = root_.getChildByUID(uid);
    const std::string reference =
        std::string("\"") + element + "\"" + (uid.isValid() ? " " + toString(uid.value()) : "");
    if (!uid.isValid())
        faults_.push_back(reference + " is missing");
    else if (!found)
        faults_.push_back(reference + " leads to no node");
    else if (types.size() != 0 && std::find(types.begin(), types.end(), found->getType()) == types.end())
        faults_.push_back(reference + " leads to a \"" + nodeElementName(found->getType()) + "\" node");
    else
        return;
    bindable_ = false;
}

void NodeCheck::checkReferences(SceneNode& node) {
    switch (node.getType()) {
    case NODE_MODEL:
        checkModel(static_cast<SceneNodeModel&>(node));
        break;
    case NODE_SPHERE: {
        const auto& sphere = static_cast<const SceneNodeSphere&>(node);
        checkReference("material_uid", NodeReferences::uidOf(sphere.material, sphere.material_uid),
                       {NODE_MATERIAL});
        break;
    }
    case NODE_SECTION_PLANE:
        for (const SceneNodeUID uid : static_cast<const SceneNodeSectionPlane&>(node).object_list)
            checkReference("object_list", uid, {NODE_MODEL});
        break;
    case NODE_SCATTER: {
        const auto& scatter = static_cast<const SceneNodeScatter&>(node);
        checkReference("geometry_uid", NodeReferences::uidOf(scatter.geometry, scatter.geometry_uid),
                       {NODE_MESH, NODE_PARAMETRIC_SURFACE});
        if (scatter.target_object_uid.isValid())
            checkReference("target_object_uid", scatter.target_object_uid, {NODE_MODEL});
        break;
    }
    case NODE_RENDER_SETTINGS:
        faults_ = imageSizeFaults(static_cast<const SceneNodeRenderSettings&>(node));
        break;
    default:
        // Which type a material's reference needs is its class's to know: binding tells.
        for (const SceneNodeUID uid : node.getReferencedUIDs())
            if (uid.isValid())
                checkReference("uid", uid, {});
    }
}

void NodeCheck::checkModel(SceneNodeModel& model) {
    checkReference("geometry_uid", NodeReferences::uidOf(model.geometry, model.geometry_uid),
                   {NODE_MESH, NODE_PARAMETRIC_SURFACE});
    Vector<SceneNodeUID> materials;
    NodeReferences::appendMaterialUIDs(materials, model.materials, model.material_uids);
    for (const SceneNodeUID uid : materials)
        checkReference("material_uid", uid, {NODE_MATERIAL});
    checkMaterialCount(model);
    if (!model.rotation)
        faults_.push_back("\"rotation\" is missing");
}

void NodeCheck::checkMaterialCount(const SceneNodeModel& model) {
    const SceneNode* const geometry =
        model.geometry ? model.geometry.getPointer()
                       : static_cast<const SceneNode*>(root_.getChildByUID(model.geometry_uid));
    const auto* const mesh_node = dynamic_cast<const SceneNodeMesh*>(geometry);
    if (!mesh_node || !mesh_node->mesh)
        return;
    const u64 assigned = std::max(model.materials.size(), model.material_uids.size());
    const u32 needed = mesh_node->mesh->num_materials_referenced;
    if (assigned < needed) {
        faults_.push_back("the mesh refers to " + toString(needed) + " materials and the model has " +
                          toString(assigned));
        bindable_ = false;
    }
}

void NodeCheck::checkMotion(SceneNode& node) {
    const bool still = node.getType() == NODE_MODEL    ? static_cast<SceneNodeModel&>(node).keyframes.empty()
                       : node.getType() == NODE_SPHERE ? static_cast<SceneNodeSphere&>(node).keyframes.empty()
                       : node.getType() == NODE_CAMERA ? static_cast<SceneNodeCamera&>(node).keyframes.empty()
                                                       : false;
    if (still)
        faults_.push_back("there is no keyframe");
}

void NodeCheck::bind(SceneNode& node) {
    SceneVisitor binding;
    binding.mode = SceneVisitor::BIND;
    try {
        node.doVisit(binding);
    } catch (const MessageExcep& excep) {
        faults_.emplace_back(excep.what());
    }
}

} // namespace Quenza
