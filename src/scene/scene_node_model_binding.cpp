// SPDX-License-Identifier: MIT
#include "scene/scene_node_model.h"

#include "foundation/exceptions.h"
#include "foundation/string_utils.h"
#include "scene/node_references.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_root.h"

#include <algorithm>

namespace Quenza {

void SceneNodeModel::bind() {
    NodeReferences::bindGeometry(*this, geometry, geometry_uid);
    SceneNodeMesh* mesh_node = meshGeometry();
    if (mesh_node)
        bindEmission(*mesh_node);
    NodeReferences::bindMaterials(*this, materials, material_uids);
    if (mesh_node && mesh_node->mesh)
        checkMaterialCount(*mesh_node->mesh);
}

SceneNodeMesh* SceneNodeModel::meshGeometry() const {
    if (!geometry || geometry->getType() != NODE_MESH)
        return nullptr;
    return static_cast<SceneNodeMesh*>(geometry.getPointer());
}

void SceneNodeModel::bindEmission(SceneNodeMesh& mesh_node) {
    const auto bind_one = [&](auto& emission, const char* kind) {
        if (emission.material)
            return;
        SceneNodeUID found = emission.material_uid;
        if (!found.isValid() && !emission.material_name.empty())
            found = materialUIDByName(mesh_node, emission.material_name);
        if (!found.isValid())
            throw QuenzaException(String("Failed binding material to ") + kind + " in model " + name +
                                  ": Invalid UID.");
        SceneNodeRoot* root = getRoot();
        if (!root)
            throw QuenzaException("While binding geometry: root node was NULL");
        emission.material = root->getMaterial(found);
    };
    for (const Ref<EmissionScale>& emission_scale : emission_scales)
        bind_one(*emission_scale, "Emission scale");
    for (const Ref<IESProfile>& profile : ies_profiles)
        bind_one(*profile, "IES profile");
}

SceneNodeUID SceneNodeModel::materialUIDByName(const SceneNodeMesh& mesh_node,
                                               const String& material_name) const {
    const Vector<String> no_names;
    const Vector<String>& names = mesh_node.mesh ? mesh_node.mesh->used_materials : no_names;
    const u64 index = u64(std::find(names.begin(), names.end(), material_name) - names.begin());
    if (index == names.size())
        throw QuenzaException("Material '" + material_name + "' is not defined on mesh " +
                              mesh_node.getName() + ".");
    if (materials.empty() && material_uids.empty())
        throw QuenzaException("No materials assigned to model " + name + ".");
    Vector<SceneNodeUID> uids;
    NodeReferences::appendMaterialUIDs(uids, materials, material_uids);
    return index < uids.size() ? uids[index] : SceneNodeUID::INVALID;
}

void SceneNodeModel::checkMaterialCount(const Mesh& mesh) const {
    if (materials.size() >= mesh.num_materials_referenced)
        return;
    throw QuenzaException("Model (UID " + uid.toString() + ", name '" + name +
                          "') has a different number of materials assigned than the geometry references.\n" +
                          "num materials assigned: " + toString(u64(materials.size())) +
                          ", geometry num materials referenced: " + toString(mesh.num_materials_referenced) +
                          ".  SDK Users: make sure you call endOfModel() on QuenzaMesh objects");
}

} // namespace Quenza
