// SPDX-License-Identifier: MIT
#pragma once

#include "engine/background.h"
#include "engine/camera.h"
#include "engine/geometry.h"
#include "engine/image_cache.h"
#include "engine/lights.h"
#include "engine/material_compiler.h"
#include "engine/notices.h"
#include "engine/shape_store.h"
#include "scene/scene_node_camera.h"
#include "scene/scene_node_mesh.h"
#include "scene/scene_node_model.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_root.h"
#include "scene/scene_node_section_plane.h"
#include "scene/scene_node_sphere.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace engine {

/// A scene graph made ready for the tracer. It shares the graph's meshes, which must not change meanwhile.
class RenderScene {
public:
    /// The root is finalised. Files with relative paths are looked for in `folder`, the renderer's own in
    /// `data_folder`. Throws QuenzaException when the scene can't be rendered: there is no camera, a mesh is
    /// broken, the memory doesn't suffice. What is on a layer beyond `max_layers` goes to the first.
    RenderScene(Quenza::SceneNodeRoot& root, const std::string& folder, const std::string& data_folder,
                Quenza::u32 max_layers);

    const Geometry& geometry() const { return geometry_; }
    const Lights& lights() const { return lights_; }
    const Background& background() const { return *background_; }
    const Camera& camera() const { return *camera_; }
    const Quenza::SceneNodeRenderSettings& settings() const { return *settings_; }
    /// At least 1; the settings have a layer for each.
    Quenza::u32 numLayers() const { return num_layers_; }
    const Notices& notices() const { return notices_; }

    static constexpr Quenza::u32 MAX_LAYERS = 256;

    /// Sees the scene through another camera.
    void setCamera(const Quenza::SceneNodeCamera& camera);

private:
    void readSettings(Quenza::SceneNodeRoot& root, Quenza::u32 max_layers);
    void addCutPlanes(const Quenza::SceneNodeRoot& root);
    void addCutPlane(const Quenza::Ref<Quenza::SceneNodeSectionPlane>& node);
    void addObjects(const Quenza::SceneNodeRoot& root);
    void addModel(const Quenza::SceneNodeModel& model);
    void addSphere(const Quenza::SceneNodeSphere& sphere);
    void addInstance(std::unique_ptr<Instance> instance, Quenza::SceneNodeUID uid,
                     const Quenza::SceneNodeModel* model);

    Notices notices_;
    ImageCache images_;
    MaterialCompiler materials_;
    Geometry geometry_;
    ShapeStore shapes_;
    Lights lights_;
    std::optional<Background> background_;
    std::optional<Camera> camera_;
    Quenza::Ref<Quenza::SceneNodeRenderSettings> settings_;
    Quenza::u32 num_layers_ = 1;
    std::vector<Quenza::Ref<Quenza::SceneNodeSectionPlane>> cut_nodes_;
};

} // namespace engine
