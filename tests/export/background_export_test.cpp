// SPDX-License-Identifier: MIT
#include "export/background_export.h"
#include "export/emission_export.h"
#include "export/exporter_fixture.h"
#include "host/ids.h"
#include "host/material.h"
#include "materials/background_material.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/sun_sky_material.h"
#include "scene/scene_node_background_settings.h"
#include "shared/light_layers.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

using Quenza::DiffuseMaterial;
using Quenza::SunSkyMaterial;

namespace {

class BackgroundExportTest : public ExporterTest {
protected:
    BaseContainer& addBackground(int32_t kind) {
        BaseContainer& settings = addVideoPost();
        settings.SetLong(RS_UNIT, RS_UNIT_M);
        settings.SetLong(RS_BACKGROUND, kind);
        return settings;
    }
    BaseMaterial* addShining() {
        BaseMaterial* const material = addMaterial(PLUGINID_MATERIAL);
        material->GetDataInstance()->SetBool(MAT_EMISSION_ENABLED, true);
        return material;
    }
    Quenza::SceneNodeBackgroundSettings& background() const {
        const auto found = nodes<Quenza::SceneNodeBackgroundSettings>(Quenza::NODE_BACKGROUND_SETTINGS);
        EXPECT_EQ(found.size(), 1u);
        return *found.at(0);
    }
    template <class Material>
    const Material& material() const {
        return dynamic_cast<const Material&>(*background().background_material);
    }
    std::string emission() const { return xml(*material<DiffuseMaterial>().base_emission); }
    bool isEmpty() const { return !background().background_material && !background().emission_scale; }
    void addLightOnLayer(int32_t key) {
        addTag(add(Olight, "light"), PLUGINID_LIGHT_TAG)->GetDataInstance()->SetLong(LIGHT_LAYER, key);
    }
};

using Layers = std::map<int32_t, int32_t>;

} // namespace

TEST_F(BackgroundExportTest, DocumentsWithoutRenderSettingsHaveAWhiteEnvironment) {
    exportScene();
    EXPECT_EQ(emission(), "<constant><uniform><value>1</value></uniform></constant>");
    EXPECT_FALSE(material<DiffuseMaterial>().albedo);
}

TEST_F(BackgroundExportTest, TheSunShinesAlongTheObjectsZAxis) {
    BaseContainer& settings = addBackground(RS_BACKGROUND_SUN_SKY);
    exportScene();
    EXPECT_EQ(material<SunSkyMaterial>().sundir, (Quenza::Vec3d{1, 1, 1}));

    BaseObject* const parent = add(Onull, "parent");
    parent->SetMl({{}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}});
    BaseObject* const sun = add(Onull, "sun", parent);
    sun->SetMl({{9, 9, 9}, {1, 0, 0}, {0, 0, 1}, {0.25f, -0.5f, 2}});
    settings.SetLink(RS_SUN_OBJECT, sun);
    settings.SetBool(RS_CAPTURED_SKY, true);
    exportScene();
    // In the host's world the axis is (0.5, 0.25, 2): the sun stands on the other side.
    EXPECT_EQ(material<SunSkyMaterial>().sundir, (Quenza::Vec3d{-0.5, -2, -0.25}));
    EXPECT_EQ(material<SunSkyMaterial>().model, "captured-simulation");
}

TEST_F(BackgroundExportTest, LayersOfSunAndSkyComeBeforeThoseOfLights) {
    BaseContainer& settings = addBackground(RS_BACKGROUND_SUN_SKY);
    addLightOnLayer(3);
    exportScene();
    EXPECT_EQ(context().layerMap, (Layers{{LAYER_KEY_SKY, 0}, {3, 1}}));
    EXPECT_EQ(layerNames(), (std::vector<std::string>{"Sun/Sky", "Layer 4"}));
    EXPECT_EQ(material<SunSkyMaterial>().sky_layer, 0);

    settings.SetBool(RS_SPLIT_SUN_SKY, true);
    exportScene();
    EXPECT_EQ(context().layerMap, (Layers{{LAYER_KEY_SUN, 0}, {LAYER_KEY_SKY, 1}, {3, 2}}));
    EXPECT_EQ(layerNames(), (std::vector<std::string>{"Sun", "Sky", "Layer 4"}));
    EXPECT_EQ(material<SunSkyMaterial>().sun_layer, 0);
    EXPECT_EQ(material<SunSkyMaterial>().sky_layer, 1);
}

TEST_F(BackgroundExportTest, OnlyAShiningMaterialOfThePlugInServes) {
    BaseContainer& settings = addBackground(RS_BACKGROUND_MATERIAL);
    BaseMaterial* const dark = addMaterial(PLUGINID_MATERIAL);
    BaseMaterial* const foreign = addMaterial(Mmaterial);
    foreign->GetDataInstance()->SetBool(MAT_EMISSION_ENABLED, true);
    for (BaseMaterial* const link : {static_cast<BaseMaterial*>(nullptr), dark, foreign}) {
        settings.SetLink(RS_BACKGROUND_LINK, link);
        exportScene();
        EXPECT_TRUE(isEmpty());
        EXPECT_FALSE(exportBackground(exporter()));
    }
}

TEST_F(BackgroundExportTest, TheMaterialGivesItsEmissionAlone) {
    BaseContainer& settings = addBackground(RS_BACKGROUND_MATERIAL);
    BaseMaterial* const shining = addShining();
    settings.SetLink(RS_BACKGROUND_LINK, shining);
    BaseContainer& data = *shining->GetDataInstance();
    addLightOnLayer(3);
    data.SetVector(MAT_EMISSION_COLOUR, {1.0f, 0.5f, 0.0f});
    data.SetReal(MAT_EMISSION_BRIGHTNESS, 0.5f);
    data.SetReal(MAT_EMISSION_GAMMA, 1.25f);
    data.SetLong(MAT_EMISSION_LAYER, 6);
    for (const int32_t link : {MAT_ALBEDO_SHADER, MAT_EMISSION_SHADER, MAT_BUMP_SHADER}) {
        BaseShader* const bitmap = BaseShader::Alloc(Xbitmap);
        bitmap->GetDataInstance()->SetFilename(BITMAPSHADER_FILENAME, Filename("C:\\sky.hdr"));
        shining->InsertShader(bitmap);
        data.SetLink(link, bitmap);
    }
    for (const int32_t flag : {MAT_ALBEDO_ENABLED, MAT_BUMP_ENABLED, MAT_BACKFACE_EMIT}) {
        data.SetBool(flag, true);
    }
    exportScene();
    EXPECT_EQ(
        xml(background()),
        "<background_settings><uid>4</uid><name></name><background_material><material>"
        "<name>background_material</name><diffuse><texture><path>C:\\sky.hdr</path><a>0</a><b>0</b><c>0</c>"
        "<uv_set_index>0</uv_set_index><exponent>0</exponent><tex_coord_generation><uv>"
        "<matrix>1 0 0 1</matrix><translation>0 0</translation></uv></tex_coord_generation>"
        "<smooth>false</smooth></texture><base_emission><constant><rgb><rgb>0.5 0.25 0</rgb>"
        "<gamma>1.25</gamma></rgb></constant></base_emission><emission><texture><texture_index>0"
        "</texture_index></texture></emission><random_triangle_colours>false</random_triangle_colours>"
        "<layer>0</layer></diffuse></material></background_material></background_settings>");
    EXPECT_EQ(context().layerMap, (Layers{{6, 0}, {3, 1}}));
    for (const auto& [key, layer] : Layers{{3, 1}, {4, 2}, {6, 0}}) {
        data.SetLong(MAT_EMISSION_LAYER, key);
        const Quenza::Ref<Quenza::Material> exported = exportBackgroundMaterial(context(), shining);
        EXPECT_EQ(dynamic_cast<const DiffuseMaterial&>(*exported).layer, layer) << key;
    }

    data.SetLong(MAT_EMISSION_TYPE, MAT_SPECTRUM_TABULATED);
    data.SetBool(MAT_USE_EMISSION_SCALE, true);
    data.SetLong(MAT_EMISSION_SCALE_MEASURE, MAT_MEASURE_LUMINANCE);
    data.SetReal(MAT_EMISSION_SCALE_VALUE, 5000.0f);
    const std::pair<const char*, const char*> cases[] = {{"0.2 x\t0.4", "3</num_values><values>0.2 0 0.4 "},
                                                         {"0.2", "2</num_values><values>0.1 0.1 "},
                                                         {"", "2</num_values><values>0.1 0.1 "}};
    for (const auto& [values, expected] : cases) {
        data.SetString(MAT_EMISSION_TAB_VALUES, values);
        exportScene();
        EXPECT_EQ(
            emission(),
            std::string(
                "<constant><regular_tabulated><start_wavelength>4.0000000000000003e-7</start_wavelength>"
                "<end_wavelength>7.000000000000001e-7</end_wavelength><num_values>") +
                expected + "</values></regular_tabulated></constant>");
    }
    ASSERT_TRUE(background().emission_scale);
    EXPECT_EQ(background().emission_scale->measure, Quenza::EmissionScale::LUMINANCE);
    EXPECT_EQ(background().emission_scale->value, 5000.0);
    EXPECT_FALSE(background().emission_scale->getMaterialUID().isValid());
}

TEST_F(BackgroundExportTest, ModelsTakeTheEmissionOfTheirMaterialsThatAreInTheScene) {
    BaseMaterial* const known = addMaterial(PLUGINID_MATERIAL);
    BaseMaterial* const unknown = addMaterial(PLUGINID_MATERIAL);
    for (BaseMaterial* const each : {known, unknown}) {
        BaseContainer& data = *each->GetDataInstance();
        data.SetBool(MAT_USE_EMISSION_SCALE, true);
        data.SetLong(MAT_EMISSION_SCALE_MEASURE, MAT_MEASURE_LUMINOUS_EMITTANCE);
        data.SetReal(MAT_EMISSION_SCALE_VALUE, 40.0f);
        data.SetLong(MAT_USE_IES, 1);
    }
    exportScene();
    ExportContext& exported = context();
    const Quenza::Ref<Quenza::SceneNodeMaterial> node = new Quenza::SceneNodeMaterial;
    scene().addChild(node);
    exported.materialMap[known] = node;
    const auto emissionOf = [&] {
        const Quenza::Ref<Quenza::SceneNodeModel> model = new Quenza::SceneNodeModel;
        addMaterialEmission(exported, *model, {unknown, known});
        return model;
    };
    Quenza::Ref<Quenza::SceneNodeModel> model = emissionOf();
    ASSERT_EQ(model->emission_scales.size(), 1u);
    EXPECT_EQ(model->emission_scales[0]->measure, Quenza::EmissionScale::LUMINOUS_EMITTANCE);
    EXPECT_EQ(model->emission_scales[0]->value, 40.0);
    EXPECT_EQ(model->emission_scales[0]->getMaterialUID(), node->getUID());
    EXPECT_TRUE(model->ies_profiles.empty()) << "there is no file";

    const struct {
        const char* file;
        std::string expected;
    } cases[] = {{"lamps/a.ies", (folder() / "lamps/a.ies").string()}, {"/lamps/b.ies", "/lamps/b.ies"}};
    known->GetDataInstance()->SetBool(MAT_USE_EMISSION_SCALE, false);
    for (const auto& test : cases) {
        known->GetDataInstance()->SetFilename(MAT_IES_FILE, Filename(test.file));
        model = emissionOf();
        ASSERT_EQ(model->ies_profiles.size(), 1u);
        EXPECT_EQ(model->ies_profiles[0]->path.toStdString(), test.expected);
        EXPECT_EQ(model->ies_profiles[0]->getMaterialUID(), node->getUID());
        EXPECT_TRUE(model->emission_scales.empty());
    }
}
