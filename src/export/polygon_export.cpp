// SPDX-License-Identifier: MIT
#include "export/polygon_export.h"

#include "export/emission_export.h"
#include "export/exit_portal_export.h"
#include "export/mesh_hash.h"
#include "export/model_export.h"
#include "export/scene_exporter.h"
#include "host/ids.h"
#include "host/tag.h"
#include "materials/material_export.h"
#include "scene/scene_node_mesh.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <algorithm>

using Quenza::Mesh;
using Quenza::Ref;
using Quenza::SceneNodeMesh;
using Quenza::SceneNodeUID;

namespace {

void copySubdivision(const BaseTag* tag, SceneNodeMesh& node) {
    const BaseContainer* const data = tag->GetDataInstance();
    node.max_num_subdivisions = data->GetLong(SUBDIV_MAX, 3);
    node.subdivide_pixel_threshold = double(data->GetReal(SUBDIV_PIXEL_THRESHOLD));
    node.subdivide_curvature_threshold = double(data->GetReal(SUBDIV_CURVATURE_THRESHOLD, 0.1f));
    node.displacement_error_threshold = double(data->GetReal(SUBDIV_DISPLACEMENT_ERROR));
    node.subdivision_smoothing = data->GetBool(SUBDIV_SMOOTHING);
    node.view_dependent_subdivision = data->GetBool(SUBDIV_VIEW_DEPENDENT);
}

SceneNodeUID createMeshNode(SceneExporter& exporter, const BaseObject* object, const Ref<Mesh>& mesh) {
    const Ref<SceneNodeMesh> node = new SceneNodeMesh;
    node->normal_smoothing = object->GetTag(Tphong) != nullptr;
    node->mesh = mesh;
    node->merge_vertices_with_same_pos_and_normal = !exporter.context->mergeVertices;
    if (const BaseTag* const tag = object->GetTag(PLUGINID_SUBDIVISION_TAG)) {
        copySubdivision(tag, *node);
    }
    exporter.root->addChild(node);
    return node->getUID();
}

/// The node of the object's mesh, new unless the scene has an equal one. Invalid when it can't be converted.
SceneNodeUID findOrConvert(SceneExporter& exporter, PolygonObject* object,
                           const std::vector<MaterialSlot>& slots, bool isLightGeometry) {
    const ExportContext& context = *exporter.context;
    const uint32_t hash = meshHash(object, listObjectMaterials(slots), isLightGeometry, context.sceneScale);
    const auto found = exporter.meshMap.find(hash);
    if (found != exporter.meshMap.end()) {
        ++exporter.instanceCount;
        return found->second;
    }
    const Ref<Mesh> mesh = exporter.meshExporter.convertMesh(
        object, slots, {context.document, context.sceneScale, context.mergeVertices, context.verbose});
    if (!mesh) {
        return {};
    }
    const SceneNodeUID uid = createMeshNode(exporter, object, mesh);
    exporter.meshMap.emplace(hash, uid);
    return uid;
}

/// Selections don't enter the hash, so an equal mesh may have more slots than the object that it was found
/// for.
void fillUpMaterials(SceneExporter& exporter, ExportedMesh& exported) {
    const auto* const node = static_cast<SceneNodeMesh*>(exporter.root->getChildByUID(exported.uid));
    while (exported.materials.size() < node->mesh->used_materials.size()) {
        exported.materials.push_back(exported.materials.back());
    }
}

/// The host's materials of the object, each once, in slot order.
std::vector<BaseMaterial*> listHostMaterials(const std::vector<MaterialSlot>& slots) {
    std::vector<BaseMaterial*> materials;
    for (const TextureTag* const tag : listObjectMaterials(slots)) {
        BaseMaterial* const material = tag->GetMaterial();
        if (material && std::find(materials.begin(), materials.end(), material) == materials.end()) {
            materials.push_back(material);
        }
    }
    return materials;
}

/// From here on the materials of the object are in the scene.
void exportMaterials(SceneExporter& exporter, const std::vector<MaterialSlot>& slots) {
    for (const TextureTag* const tag : listObjectMaterials(slots)) {
        getMaterialUID(tag->GetMaterial(), *exporter.root, *exporter.context);
    }
}

/// The mesh and materials of an object. An object that instances lead to comes again and again, and isn't
/// hashed anew: nothing changes during an export.
const ExportedMesh& meshOf(SceneExporter& exporter, PolygonObject* object, ExportedMesh& fresh) {
    if (exporter.enteredLinks.empty()) {
        fresh = exportMesh(exporter, object, false);
        return fresh;
    }
    const auto [entry, isNew] = exporter.instancedMeshes.try_emplace(object);
    if (isNew) {
        entry->second = exportMesh(exporter, object, false);
    } else if (entry->second.uid.isValid()) {
        ++exporter.instanceCount;
    }
    return entry->second;
}

} // namespace

ExportedMesh exportMesh(SceneExporter& exporter, PolygonObject* object, bool isLightGeometry) {
    const std::vector<MaterialSlot> slots = listMaterialSlots(object);
    if (!isLightGeometry) {
        exportMaterials(exporter, slots);
    }
    ExportedMesh exported;
    exported.uid = findOrConvert(exporter, object, slots, isLightGeometry);
    if (exported.uid.isValid()) {
        exported.materials = listSlotMaterials(*exporter.context, slots, isLightGeometry);
        fillUpMaterials(exporter, exported);
        exported.hostMaterials = listHostMaterials(slots);
    }
    return exported;
}

void exportPolygonObject(SceneExporter& exporter, PolygonObject* object, const Matrix& matrix,
                         bool invisibleToCamera) {
    if (object->GetPolygonCount() < 1) {
        return;
    }
    ExportedMesh fresh;
    const ExportedMesh& mesh = meshOf(exporter, object, fresh);
    if (!mesh.uid.isValid()) {
        return;
    }
    if (const BaseTag* const portal = object->GetTag(PLUGINID_EXIT_PORTAL_TAG)) {
        if (portal->GetDataInstance()->GetBool(EXIT_PORTAL_ENABLED, true)) {
            exportExitPortal(exporter, object, mesh.uid, matrix, mesh.materials.size());
        }
        return;
    }
    const Ref<Quenza::SceneNodeModel> model = makeModel(exporter, object, mesh.uid, mesh.materials);
    placeModel(exporter, object, matrix, *model);
    model->invisible_to_camera = invisibleToCamera;
    addMaterialEmission(*exporter.context, *model, mesh.hostMaterials);
    addModel(exporter, object, model);
}
