// SPDX-License-Identifier: MIT
#pragma once

#include "export/mesh_convert.h"
#include "host/atomarray.h"
#include "host/general.h"
#include "host/object.h"
#include "scene/render_settings_parts.h"
#include "scene/scene_node_root.h"
#include "scene/scene_node_section_plane.h"
#include "shared/export_context.h"

#include <exception>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// A section plane of the scene with the objects that it concerns, not owned.
struct SectionPlaneObjects {
    Quenza::Ref<Quenza::SceneNodeSectionPlane> plane;
    std::unique_ptr<AtomArray> objects;
};

/// A mesh node with the materials of its slots.
struct ExportedMesh {
    /// Invalid when the mesh couldn't be converted.
    Quenza::SceneNodeUID uid;
    std::vector<Quenza::SceneNodeUID> materials;
    /// The host's materials, each once.
    std::vector<BaseMaterial*> hostMaterials;
};

/// Turns one document at one frame into one scene: owns the scene under construction and runs the passes in
/// their order. A step that fails leaves its part out; exceptions of the scene library go up to the caller.
class SceneExporter : public Hierarchy {
public:
    /// Builds the scene of `context`, on caches that are built already. Null without a context or document.
    Quenza::Ref<Quenza::SceneNodeRoot> exportScene();
    /// The same through the host's walk, which builds all caches as for rendering. Null also when the walk
    /// ends before it reaches an object: in an empty document, or when `thread` was asked to stop.
    Quenza::Ref<Quenza::SceneNodeRoot> runHierarchy(BaseThread* thread);

    bool Do(void* data, BaseObject* object, const Matrix& matrix, bool controlObject) override;

    /// Not owned; set by the caller right after construction.
    ExportContext* context = nullptr;
    Quenza::Ref<Quenza::SceneNodeRoot> root;
    /// One slot for each light layer of the scene; null until the layer has a name.
    Quenza::Vector<Quenza::Ref<Quenza::LayerSetting>> layerSettings;
    /// Polygon objects that area lights use as their shape: they are no objects of the scene.
    std::unique_ptr<AtomArray> lightGeometry;
    /// Mesh hash to mesh node.
    std::map<uint32_t, Quenza::SceneNodeUID> meshMap;
    /// Meshes of the objects that instances lead to.
    std::unordered_map<const BaseObject*, ExportedMesh> instancedMeshes;
    PolygonMeshExporter meshExporter;
    /// The path from the top of the document to the current object.
    std::vector<BaseObject*> objectChain;
    /// Indices into `excludingPlanes` of the planes that act on the current object.
    std::vector<int32_t> activeSectionPlanes;
    /// The objects that instances have led to and that are being walked.
    std::unordered_set<const BaseObject*> enteredLinks;
    /// How many objects the scan came by: as many as the export will.
    int64_t scannedObjects = 0;
    /// 0 scans the tree, 1 exports it.
    int32_t pass = 0;
    /// How often a mesh hash was found again.
    int32_t instanceCount = 0;
    /// File name of this frame's scene.
    String sceneFileName;
    Random random;
    /// Planes that see their listed objects alone, and those that see all below them as well.
    std::vector<SectionPlaneObjects> includingPlanes;
    std::vector<SectionPlaneObjects> excludingPlanes;

private:
    void print(const String& line) const;
    void exportSettingsNodes();
    void exportObjects();

    /// What Do has caught: nothing may pass through the host's frames.
    std::exception_ptr failure_;
};
