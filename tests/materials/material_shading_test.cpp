// SPDX-License-Identifier: MIT
#include "host/bitmap.h"
#include "host/ids.h"
#include "materials/material_fixture.h"
#include "materials/quenza_material.h"

#include <cmath>

namespace {

class HostShading : public MaterialTest {
protected:
    static MaterialData& behaviour(BaseMaterial* material) {
        return *dynamic_cast<MaterialData*>(material->GetNodeData());
    }
    /// What the material answers to a ray along `direction` on a surface that looks along +Z.
    VolumeData shade(BaseMaterial* material, const Vector& direction, int32_t mode, float ior = 1.0f) {
        ray_ = ShadingRay();
        ray_.p = Vector(5, 6, 7);
        ray_.v = direction;
        ray_.ior = ior;
        VolumeData volume;
        volume.document = document();
        volume.n = Vector(0, 0, 1);
        volume.ray = &ray_;
        volume.rayMode = mode;
        EXPECT_EQ(behaviour(material).InitRender(material, {document(), BaseTime()}), INITRENDERRESULT_OK);
        behaviour(material).CalcSurface(material, &volume);
        behaviour(material).FreeRender(material);
        return volume;
    }

private:
    ShadingRay ray_;
};

void expectNear(const Vector& value, const Vector& expected, const std::string& what) {
    EXPECT_NEAR(value.x, expected.x, 1e-5f) << what;
    EXPECT_NEAR(value.y, expected.y, 1e-5f) << what;
    EXPECT_NEAR(value.z, expected.z, 1e-5f) << what;
}

TEST_F(HostShading, RefractsAndReflectsWithin) {
    BaseMaterial* const glass = addMaterial("glass", MAT_KIND_SPECULAR);
    data(glass).SetReal(MAT_MEDIUM_IOR, 1.5f);
    const float root = std::sqrt(1.0f - 0.36f / 2.25f);
    const struct {
        const char* what;
        Vector in;
        float ior;
        Vector out;
        float newIor;
    } cases[] = {
        {"straight in", {0, 0, -1}, 1.0f, {0, 0, -1}, 1.5f},
        {"in: the sine shrinks by 1.5", {0.6f, 0, -0.8f}, 1.0f, {0.4f, 0, -root}, 1.5f},
        {"out: the sine grows by 1.5", {0.4f, 0, root}, 1.5f, {0.6f, 0, 0.8f}, 1.0f},
        {"can't leave", {0.8f, 0, 0.6f}, 1.5f, {0.8f, 0, -0.6f}, 1.5f},
    };
    for (const auto& test : cases) {
        const VolumeData volume = shade(glass, test.in, RAYMODE_REFRACT, test.ior);
        expectNear(volume.continued.v, test.out, test.what);
        EXPECT_EQ(volume.continued.ior, test.newIor) << test.what;
        EXPECT_EQ(volume.transparency, Vector(1, 1, 1));
        EXPECT_EQ(volume.colour, Vector());
    }
    const VolumeData straight = shade(glass, {0.6f, 0, -0.8f}, RAYMODE_STRAIGHT);
    EXPECT_EQ(straight.continued.v, Vector(0.6f, 0, -0.8f));
    EXPECT_EQ(straight.continued.p, Vector(5, 6, 7));
}

TEST_F(HostShading, ShowsAlbedoAndEmission) {
    BaseMaterial* const diffuse = addMaterial("diffuse");
    data(diffuse).SetVector(MAT_ALBEDO_COLOUR, Vector(1.0f, 0.5f, 0.0f));
    const Vector lit = shade(diffuse, {0, 0, -1}, RAYMODE_NONE).colour;
    ASSERT_GT(lit.x, 0.0f) << "the host lights the surface";
    EXPECT_NEAR(lit.y, 0.5f * lit.x, 1e-5f);
    EXPECT_EQ(lit.z, 0.0f);
    EXPECT_EQ(shade(diffuse, {0, 0, -1}, RAYMODE_NONE).transparency, Vector());

    data(diffuse).SetBool(MAT_EMISSION_ENABLED, true);
    data(diffuse).SetVector(MAT_EMISSION_COLOUR, Vector(0, 0, 2));
    expectNear(shade(diffuse, {0, 0, -1}, RAYMODE_NONE).colour, lit + Vector(0, 0, 1.6f), "emission");

    // A gradient is white at u = 0; the channel's curve makes 0.25 of it.
    addShader(diffuse, MAT_ALBEDO_SHADER, PLUGINID_QSL_GRADIENT);
    data(diffuse).SetBool(MAT_EMISSION_ENABLED, false);
    data(diffuse).SetReal(MAT_ALBEDO_A, 0.5f);
    data(diffuse).SetReal(MAT_ALBEDO_B, -0.5f);
    data(diffuse).SetReal(MAT_ALBEDO_C, 0.25f);
    const float light = lit.x / 0.8f;
    expectNear(shade(diffuse, {0, 0, -1}, RAYMODE_NONE).colour, Vector(1, 1, 1) * (0.25f * light), "shader");

    BaseMaterial* const mirror = addMaterial("mirror", MAT_KIND_SPECULAR);
    data(mirror).SetBool(MAT_SPECULAR_TRANSPARENT, false);
    const VolumeData opaque = shade(mirror, {0, 0, -1}, RAYMODE_REFRACT);
    EXPECT_EQ(opaque.colour, Vector()) << "a mirror has no colour of its own";
    EXPECT_EQ(opaque.transparency, Vector());
}

} // namespace
