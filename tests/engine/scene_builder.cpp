// SPDX-License-Identifier: MIT
#include "engine/scene_builder.h"

#include "engine/colour.h"
#include "scene/materials/diffuse_material.h"
#include "scene/rotation.h"
#include "scene/scene_node_background_settings.h"
#include "scene/scene_node_mesh.h"
#include "scene/spectrum.h"
#include "scene/wavelength_dependent_param.h"

#include <atomic>

using namespace Quenza;

namespace {

Ref<WavelengthDependentParam> constant(double value) {
    return new ConstantWavelengthDependentParam(new UniformSpectrum(value));
}

Ref<DiffuseMaterial> emitting(double value) {
    Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->base_emission = constant(value);
    return material;
}

} // namespace

SceneBuilder::SceneBuilder(int width, int height)
    : root(new SceneNodeRoot), camera(new SceneNodeCamera), settings(new SceneNodeRenderSettings) {
    settings->setInt("width", width);
    settings->setInt("height", height);
    settings->setInt("super_sample_factor", 1);
    settings->setBool("vignetting", false);
    settings->setSplatFilter(new SplatFilterFastBox);
    settings->setDownsizeFilter(new DownsizeFilterSharp);
    camera->keyframes.push_back(keyFrame({0, 0, 0}));
    camera->aperture_radius = 1e-6;
    camera->autofocus = false;
    root->addChild(settings);
    root->addChild(camera);
}

Ref<SceneNodeMaterial> SceneBuilder::add(const Ref<Material>& material) {
    Ref<SceneNodeMaterial> node = new SceneNodeMaterial(material);
    root->addChild(node);
    return node;
}

Ref<SceneNodeMaterial> SceneBuilder::diffuse(double albedo) {
    Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->albedo = constant(albedo);
    return add(material);
}

Ref<SceneNodeMaterial> SceneBuilder::emitter(double value, int layer) {
    Ref<DiffuseMaterial> material = emitting(value);
    material->layer = layer;
    return add(material);
}

SceneNodeModel& SceneBuilder::addModel(const Ref<Mesh>& mesh, const Ref<SceneNodeMaterial>& material,
                                       const Vec3d& position) {
    Ref<SceneNodeMesh> geometry = new SceneNodeMesh;
    geometry->mesh = mesh;
    root->addChild(geometry);
    Ref<SceneNodeModel> model = new SceneNodeModel;
    model->geometry = geometry;
    model->rotation = new MatrixRotation;
    model->materials.push_back(material);
    model->keyframes.push_back(keyFrame(position));
    root->addChild(model);
    return *model;
}

SceneNodeSphere& SceneBuilder::addSphere(const Vec3d& centre, double radius,
                                         const Ref<SceneNodeMaterial>& material) {
    Ref<SceneNodeSphere> sphere = new SceneNodeSphere;
    sphere->keyframes.push_back(keyFrame(centre));
    sphere->radius = radius;
    sphere->material = material;
    root->addChild(sphere);
    return *sphere;
}

void SceneBuilder::setBackground(const Ref<Material>& material) {
    Ref<SceneNodeBackgroundSettings> background = new SceneNodeBackgroundSettings;
    background->background_material = material;
    root->addChild(background);
}

void SceneBuilder::setUniformBackground(double value) {
    setBackground(emitting(value));
}

engine::SessionOptions SceneBuilder::options(double samples, unsigned seed) {
    engine::SessionOptions options;
    options.seed = seed;
    options.halt_samples = samples;
    return options;
}

void SceneBuilder::run(engine::RenderSession& session) {
    notices = session.scene().notices().texts();
    session.run(std::atomic<bool>{false}, [](const engine::Progress&) {});
}

std::vector<engine::FloatImage> SceneBuilder::render(double samples, unsigned seed) {
    engine::RenderSession session(root, "", options(samples, seed));
    run(session);
    return session.layerImages();
}

std::vector<unsigned char> SceneBuilder::renderDisplay(double samples, unsigned seed) {
    engine::RenderSession session(root, "", options(samples, seed));
    run(session);
    return session.toneMapper().toneMap(session.layerImages());
}

double unitLuminance() {
    return double(engine::luminance(engine::radianceOf(UniformSpectrum(1.0))));
}

Ref<Mesh> rectangle(const Vec3d& half_a, const Vec3d& half_b, int pieces) {
    Ref<Mesh> mesh = new Mesh;
    mesh->setMaxNumTexcoordSets(1);
    for (int j = 0; j <= pieces; ++j) {
        for (int i = 0; i <= pieces; ++i) {
            const double u = double(i) / pieces;
            const double v = double(j) / pieces;
            const double a = 2 * u - 1;
            const double b = 2 * v - 1;
            mesh->addVertex({float(half_a.x * a + half_b.x * b), float(half_a.y * a + half_b.y * b),
                             float(half_a.z * a + half_b.z * b)});
            mesh->addUVs({{float(u), float(v)}});
        }
    }
    for (int j = 0; j < pieces; ++j) {
        for (int i = 0; i < pieces; ++i) {
            const u32 first = u32(j * (pieces + 1) + i);
            const u32 corners[] = {first, first + 1, first + u32(pieces) + 2, first + u32(pieces) + 1};
            mesh->addQuad(corners, corners, 0);
        }
    }
    mesh->endOfModel();
    return mesh;
}

KeyFrame keyFrame(const Vec3d& position, double time) {
    return {position, time, {0, 0, 1}, 0};
}

double luminanceAt(const engine::FloatImage& image, unsigned x, unsigned y) {
    const float* const p = image.pixel(x, y);
    return double(engine::luminance({p[0], p[1], p[2]}));
}

double meanLuminance(const engine::FloatImage& image, unsigned x0, unsigned y0, unsigned x1, unsigned y1) {
    double sum = 0;
    for (unsigned y = y0; y < y1; ++y) {
        for (unsigned x = x0; x < x1; ++x) {
            sum += luminanceAt(image, x, y);
        }
    }
    return sum / double((x1 - x0) * (y1 - y0));
}

double meanLuminance(const engine::FloatImage& image) {
    return meanLuminance(image, 0, 0, image.width, image.height);
}
