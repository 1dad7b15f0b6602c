// SPDX-License-Identifier: MIT
#include "engine/output.h"
#include "engine/scene_builder.h"
#include "scene/displacement_param.h"
#include "scene/emission.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/phong_material.h"
#include "scene/materials/plugin_material.h"
#include "scene/materials/specular_material.h"
#include "scene/medium.h"
#include "scene/param_forms.h"
#include "scene/rotation.h"
#include "scene/scene_node_medium.h"
#include "scene/scene_node_mesh.h"
#include "scene/shader_info.h"
#include "scene/spectrum.h"
#include "scene/tex_coord_generator.h"
#include "scene/volume_param.h"
#include "scene/wavelength_dependent_param.h"
#include "support/temp_dir.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using namespace Quenza;

class Appearance : public ::testing::Test {
protected:
    /// A picture of two by two texels: white top left, then grey levels 0.75, 0.5 and 0.25 as one reads.
    String quarters() const {
        const std::string path = (folder_ / "quarters.png").toStdString();
        std::vector<unsigned char> rgb;
        for (const int level : {255, 191, 128, 64}) {
            rgb.insert(rgb.end(), 3, static_cast<unsigned char>(level));
        }
        EXPECT_EQ(engine::writePNG(path, 2, 2, rgb), "");
        return path;
    }

    static Texture texture(const String& path) {
        Texture texture;
        texture.path = path;
        texture.exponent = 1;
        return texture;
    }

    /// Emits what the texture shows.
    static Ref<DiffuseMaterial> shining(const Texture& texture) {
        Ref<DiffuseMaterial> material = new DiffuseMaterial;
        material->textures.push_back(texture);
        material->base_emission = new TextureWavelengthDependentParam(0);
        return material;
    }

    /// The picture as it stands on paper, with these columns in its left and right half.
    static void expectQuarters(const engine::FloatImage& image, int left, int right) {
        const double white = luminanceAt(image, left, 4);
        EXPECT_NEAR(luminanceAt(image, right, 4) / white, 0.75, 0.06);
        EXPECT_NEAR(luminanceAt(image, left, 11) / white, 0.5, 0.06);
        EXPECT_NEAR(luminanceAt(image, right, 11) / white, 0.25, 0.06);
    }

    TempDir folder_;
};

/// An environment map stands around the viewer as a panorama: its middle ahead (+y), its right half to the
/// right.
TEST_F(Appearance, EnvironmentMapsAreSeenFromWithin) {
    SceneBuilder scene(32, 16);
    Texture shown = texture(quarters());
    shown.tex_coord_generation = new SphericalEnvTexCoordGenerator;
    scene.setBackground(shining(shown));
    scene.camera->camera_type = SceneNodeCamera::SPHERICAL;
    const engine::FloatImage image = scene.render(16)[0];
    expectQuarters(image, 8, 23);
}

/// Lamps that are picked by importance and lamps that paths run into by chance give the same light.
TEST_F(Appearance, EnvironmentMapsLightAsTheyShine) {
    SceneBuilder scene(8, 8);
    Texture shown = texture(quarters());
    shown.tex_coord_generation = new SphericalEnvTexCoordGenerator;
    scene.setBackground(shining(shown));
    // A wall that looks back at the camera sees the half of the panorama behind it, whose mean is that of
    // all.
    scene.addModel(rectangle({9, 0, 0}, {0, 0, 9}), scene.diffuse(1), {0, 4, 0});
    const double white = double(engine::luminance(engine::radianceOf(RGBSpectrum({1, 1, 1}, 1))));
    EXPECT_NEAR(meanLuminance(scene.render(400)[0]) / white, (255 + 191 + 128 + 64) / 4.0 / 255.0, 0.02);
}

/// Each once, however many there are.
TEST_F(Appearance, TellsWhatIsDrawnMoreSimply) {
    SceneBuilder scene(4, 4);
    scene.setUniformBackground(1);
    const auto addBall = [&scene](const Ref<Material>& material) {
        scene.addSphere({0, 4, 0}, 0.5, scene.add(material));
    };
    const auto addMedium = [&](const Ref<Medium>& medium) {
        Ref<SceneNodeMedium> node = new SceneNodeMedium(medium);
        scene.root->addChild(node);
        Ref<SpecularMaterial> material = new SpecularMaterial;
        material->internal_medium = node;
        addBall(material);
    };
    Ref<BasicMedium> cloud = new BasicMedium;
    cloud->absorption_coefficient = new VoxelVolumeParam;
    cloud->subsurface_scattering = new SubsurfaceScattering;
    cloud->subsurface_scattering->scattering_coefficient = new ShaderVolumeParam(new ShaderInfo, false);
    Ref<DiffuseMaterial> displaced = new DiffuseMaterial;
    displaced->displacement = new ConstantDisplacementParam(0.1);
    addBall(new PluginMaterial);
    addBall(new PluginMaterial);
    addMedium(cloud);
    addMedium(new Atmosphere);
    addBall(displaced);
    auto& model = scene.addModel(rectangle({1, 0, 0}, {0, 0, 1}), scene.add(displaced), {0, 4, 0});
    static_cast<SceneNodeMesh&>(*model.geometry).max_num_subdivisions = 1000000000;
    scene.render(1);
    std::sort(scene.notices.begin(), scene.notices.end());
    const char* const coarse =
        "Meshes are subdivided up to 2000000 triangles in all; some are coarser than they should be.";
    EXPECT_EQ(scene.notices,
              (std::vector<std::string>{"Atmospheres are drawn as air of sea level at all heights.",
                                        "Materials of the kind 'plugin' are drawn in grey.", coarse,
                                        "True spheres are drawn without displacement.",
                                        "What varies within a medium is not drawn."}));
}

TEST_F(Appearance, ScenesWithoutAnyLampAreSeen) {
    SceneBuilder dark(4, 4);
    dark.addSphere({0, 4, 0}, 1, dark.diffuse(0.5));
    EXPECT_GT(meanLuminance(dark.render(16)[0]), 0);
    EXPECT_EQ(dark.notices,
              std::vector<std::string>{"The scene has no light; it is shown under an even white sky."});

    SceneBuilder faded(4, 4);
    faded.addSphere({0, 4, 0}, 1, faded.emitter(0));
    EXPECT_EQ(meanLuminance(faded.render(16)[0]), 0) << "a lamp that has faded out stays dark";
}

} // namespace
