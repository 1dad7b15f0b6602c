// SPDX-License-Identifier: MIT
#pragma once

#include "engine/images/image_file.h"
#include "engine/session.h"
#include "scene/material.h"
#include "scene/mesh.h"
#include "scene/scene_node_camera.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_model.h"
#include "scene/scene_node_render_settings.h"
#include "scene/scene_node_root.h"
#include "scene/scene_node_sphere.h"

/// Small scenes of known light. The camera stands at the origin and looks along +y, with z up and x to the
/// right; its sensor is as wide as it is far from the lens, so that a picture at distance d shows -d/2 to
/// d/2.
class SceneBuilder {
public:
    explicit SceneBuilder(int width = 16, int height = 16);

    Quenza::Ref<Quenza::SceneNodeMaterial> add(const Quenza::Ref<Quenza::Material>& material);
    Quenza::Ref<Quenza::SceneNodeMaterial> diffuse(double albedo);
    /// Black, with the spectral radiance `value` at all wavelengths.
    Quenza::Ref<Quenza::SceneNodeMaterial> emitter(double value, int layer = 0);

    Quenza::SceneNodeModel& addModel(const Quenza::Ref<Quenza::Mesh>& mesh,
                                     const Quenza::Ref<Quenza::SceneNodeMaterial>& material,
                                     const Quenza::Vec3d& position);
    Quenza::SceneNodeSphere& addSphere(const Quenza::Vec3d& centre, double radius,
                                       const Quenza::Ref<Quenza::SceneNodeMaterial>& material);
    void setBackground(const Quenza::Ref<Quenza::Material>& material);
    void setUniformBackground(double value);

    /// Renders, and gives the layers' images.
    std::vector<engine::FloatImage> render(double samples, unsigned seed = 1);

    /// The display image, three bytes a pixel.
    std::vector<unsigned char> renderDisplay(double samples, unsigned seed = 1);

    Quenza::Ref<Quenza::SceneNodeRoot> root;
    Quenza::Ref<Quenza::SceneNodeCamera> camera;
    Quenza::Ref<Quenza::SceneNodeRenderSettings> settings;
    std::vector<std::string> notices; ///< Of the last render.

private:
    void run(engine::RenderSession& session);
    static engine::SessionOptions options(double samples, unsigned seed);
};

/// Luminance of the spectral radiance 1 at all wavelengths.
double unitLuminance();

/// A rectangle about the origin that faces along `normal`; its sides are given by half vectors a and b with a
/// x b along the normal. UVs run from 0 to 1 along both. It is cut into `pieces` x `pieces` quads.
Quenza::Ref<Quenza::Mesh> rectangle(const Quenza::Vec3d& half_a, const Quenza::Vec3d& half_b, int pieces = 1);

Quenza::KeyFrame keyFrame(const Quenza::Vec3d& position, double time = 0);

double luminanceAt(const engine::FloatImage& image, unsigned x, unsigned y);
/// Over the pixels from (x0, y0) up to, and without, (x1, y1).
double meanLuminance(const engine::FloatImage& image, unsigned x0, unsigned y0, unsigned x1, unsigned y1);
double meanLuminance(const engine::FloatImage& image);
