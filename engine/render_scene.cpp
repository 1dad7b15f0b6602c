// SPDX-License-Identifier: MIT
#include "engine/render_scene.h"

#include "engine/surface_shader.h"
#include "foundation/exceptions.h"
#include "scene/rotation.h"
#include "scene/scene_node_background_settings.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace engine {

namespace {

using namespace Quenza;

struct UnknownSetting {
    const char* key;
    const char* text;
};
constexpr UnknownSetting UNKNOWN_SETTINGS[] = {
    {"material_id_tracer", "The mode 'material_id_tracer' is not known; the ordinary image is drawn."},
    {"depth_pass", "The mode 'depth_pass' is not known; the ordinary image is drawn."},
    {"shadow_pass", "The mode 'shadow_pass' is not known; the ordinary image is drawn."},
    {"render_foreground_alpha", "The alpha of the foreground is not drawn."},
    {"glass_acceleration", "Glass acceleration is not known; light through glass takes its ordinary time."},
    {"aperture_diffraction", "Diffraction at the aperture is not drawn."},
    {"write_aperture_preview", "No preview of the aperture is written."},
    {"watermark", "No watermark is drawn."},
    {"info_overlay", "No text is laid over the image."},
};

Matrix3d scaled(Matrix3d matrix, double scale) {
    for (double& e : matrix.e) {
        e *= scale;
    }
    return matrix;
}

bool isFinite(const MotionTransform& transform) {
    return std::all_of(transform.steps().begin(), transform.steps().end(), [](const Affine& a) {
        return std::isfinite(dot(a.x, a.x) + dot(a.y, a.y) + dot(a.z, a.z) + dot(a.origin, a.origin));
    });
}

} // namespace

RenderScene::RenderScene(SceneNodeRoot& root, const std::string& folder, const std::string& data_folder,
                         u32 max_layers)
    : images_(folder, notices_), materials_(images_, data_folder, notices_), shapes_(geometry_, notices_) {
    readSettings(root, max_layers);
    const auto* const camera = dynamic_cast<const SceneNodeCamera*>(root.getCameraPointer());
    if (!camera) {
        throw QuenzaException("The scene has no camera.");
    }
    addCutPlanes(root);
    addObjects(root);
    geometry_.commit();
    background_.emplace(root.getBackgroundSettings().getPointer(), materials_, notices_);
    setCamera(*camera);
}

void RenderScene::setCamera(const SceneNodeCamera& camera) {
    Camera made(camera, u32(settings_->getInt("width")), u32(settings_->getInt("height")),
                settings_->getBool("vignetting"), images_, notices_);
    made.focus(geometry_);
    camera_.emplace(std::move(made));
}

void RenderScene::readSettings(SceneNodeRoot& root, u32 max_layers) {
    const auto* const settings =
        dynamic_cast<const SceneNodeRenderSettings*>(root.getRenderSettingsPointer());
    settings_ = settings ? dynamic_cast<SceneNodeRenderSettings*>(settings->clone().getPointer())
                         : new SceneNodeRenderSettings;
    for (const char* const side : {"width", "height"}) {
        const i32 pixels = settings_->getInt(side);
        if (pixels < 1 || pixels > Quenza::MAX_IMAGE_SIDE) {
            throw QuenzaException("The image can't be " + std::to_string(pixels) + " pixels in " + side +
                                  ".");
        }
    }
    for (const UnknownSetting& unknown : UNKNOWN_SETTINGS) {
        if (settings_->getBool(unknown.key)) {
            notices_.tell(unknown.text);
        }
    }
    const u64 wanted = std::max<u64>(settings_->getNumLayers(), u64(root.highestLayerIndexInTree()) + 1);
    const u32 most = std::clamp(max_layers, 1u, MAX_LAYERS);
    if (wanted > most) {
        notices_.tell(most == 1 ? "Light layers are not kept apart."
                                : "Only " + std::to_string(most) + " light layers are kept apart.");
    }
    num_layers_ = u32(std::min<u64>(wanted, most));
    settings_->ensureLayers(num_layers_);
}

void RenderScene::addCutPlanes(const SceneNodeRoot& root) {
    for (const Ref<SceneNode>& node : root.getChildren()) {
        if (auto* const plane = dynamic_cast<SceneNodeSectionPlane*>(node.getPointer())) {
            addCutPlane(plane);
        }
    }
}

void RenderScene::addCutPlane(const Ref<SceneNodeSectionPlane>& node) {
    const SceneNodeSectionPlane& plane = *node;
    const Vec normal = normalise(toVec(plane.normal));
    if (!plane.enabled || !plane.cull_geometry || !(length(normal) > 0.5f)) {
        return;
    }
    if (cut_nodes_.size() == Geometry::MAX_CUT_PLANES) {
        notices_.tell("Only " + std::to_string(Geometry::MAX_CUT_PLANES) + " section planes cut.");
        return;
    }
    geometry_.addCutPlane({normal, dot(normal, toVec(plane.point))});
    cut_nodes_.push_back(node);
}

void RenderScene::addObjects(const SceneNodeRoot& root) {
    for (const Ref<SceneNode>& node : root.getChildren()) {
        if (const auto* model = dynamic_cast<const SceneNodeModel*>(node.getPointer())) {
            addModel(*model);
        } else if (const auto* sphere = dynamic_cast<const SceneNodeSphere*>(node.getPointer())) {
            addSphere(*sphere);
        } else if (node->getType() == NODE_SCATTER) {
            notices_.tell("Scattered objects are not drawn.");
        }
    }
}

void RenderScene::addModel(const SceneNodeModel& model) {
    const auto* const mesh = dynamic_cast<const SceneNodeMesh*>(model.geometry.getPointer());
    if (!mesh) {
        if (model.geometry && model.geometry->getType() == NODE_PARAMETRIC_SURFACE) {
            notices_.tell("Parametric surfaces are not drawn.");
        }
        return;
    }
    if (!mesh->mesh || (mesh->mesh->triangles.empty() && mesh->mesh->quads.empty())) {
        return;
    }
    auto instance = std::make_unique<Instance>();
    const Matrix3d rotation = model.rotation ? model.rotation->getMatrix() : Matrix3d::identity();
    instance->transform = MotionTransform(scaled(rotation, model.scale), model.keyframes);
    instance->invisible_to_camera = model.invisible_to_camera;
    for (const Ref<SceneNodeMaterial>& material : model.materials) {
        instance->materials.push_back(materials_.compile(material.getPointer()));
    }
    if (instance->materials.empty()) {
        instance->materials.push_back(materials_.grey());
    }
    instance->shape = shapes_.shapeFor(*mesh, *instance);
    addInstance(std::move(instance), model.getUID(), &model);
}

void RenderScene::addSphere(const SceneNodeSphere& sphere) {
    auto instance = std::make_unique<Instance>();
    instance->shape = geometry_.sphere();
    instance->transform =
        MotionTransform(scaled(Matrix3d::identity(), std::abs(sphere.radius)), sphere.keyframes);
    instance->materials.push_back(materials_.compile(sphere.material.getPointer()));
    if (instance->materials.front()->isDisplaced()) {
        notices_.tell("True spheres are drawn without displacement.");
    }
    addInstance(std::move(instance), sphere.getUID(), nullptr);
}

void RenderScene::addInstance(std::unique_ptr<Instance> instance, SceneNodeUID uid,
                              const SceneNodeModel* model) {
    if (!isFinite(instance->transform)) {
        notices_.tell("Objects whose place or size isn't finite are not drawn.");
        return;
    }
    for (u64 i = 0; i < cut_nodes_.size(); ++i) {
        const Vector<SceneNodeUID>& list = cut_nodes_[i]->object_list;
        // A list of nothing leaves nothing out, whatever its kind.
        const bool listed = list.empty() || std::find(list.begin(), list.end(), uid) != list.end();
        const bool included =
            list.empty() || cut_nodes_[i]->object_list_type == SceneNodeSectionPlane::INCLUDE;
        instance->cut_planes |= u64(listed == included ? 1 : 0) << i;
    }
    lights_.addInstance(geometry_.addInstance(std::move(instance)), model, images_, notices_);
}

} // namespace engine
