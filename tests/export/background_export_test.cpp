// SPDX-License-Identifier: MIT
#include "export/background_export.h"
#include "export/emission_export.h"
#include "export/exporter_fixture.h"
#include "host/ids.h"
#include "host/material.h"
#include "materials/background_material.h"
#include "materials/base_emission.h"
#include "scene/materials/diffuse_material.h"
#include "scene/materials/sun_sky_material.h"
#include "scene/scene_node_background_settings.h"
#include "scene/scene_node_render_settings.h"
#include "scene/wavelength_dependent_param.h"
#include "shared/light_layers.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

using Quenza::DiffuseMaterial;
using Quenza::SunSkyMaterial;

namespace {

class BackgroundExportTest : public ExporterTest {
protected:
    BaseContainer& addVideoPost(int32_t background) {
        BaseVideoPost* const videoPost = BaseVideoPost::Alloc(PLUGINID_RENDER_SETTINGS);
        document()->GetActiveRenderData()->InsertVideoPost(videoPost);
        videoPost->GetDataInstance()->SetLong(RS_UNIT, RS_UNIT_M);
        videoPost->GetDataInstance()->SetLong(RS_BACKGROUND, background);
        return *videoPost->GetDataInstance();
    }
    BaseMaterial* addMaterial(int32_t type) {
        BaseMaterial* const material = BaseMaterial::Alloc(type);
        document()->InsertMaterial(material);
        return material;
    }
    BaseMaterial* addShining() {
        BaseMaterial* const material = addMaterial(PLUGINID_MATERIAL);
        material->GetDataInstance()->SetBool(MAT_EMISSION_ENABLED, true);
        return material;
    }
    const Quenza::SceneNodeBackgroundSettings& background() const {
        const auto found = nodes<Quenza::SceneNodeBackgroundSettings>(Quenza::NODE_BACKGROUND_SETTINGS);
        EXPECT_EQ(found.size(), 1u);
        return *found.at(0);
    }
    template <class Material>
    const Material& material() const {
        return dynamic_cast<const Material&>(*background().background_material);
    }
    template <class Spectrum>
    const Spectrum& emission() const {
        const auto& param = dynamic_cast<const Quenza::ConstantWavelengthDependentParam&>(
            *material<DiffuseMaterial>().base_emission);
        return dynamic_cast<const Spectrum&>(*param.spectrum);
    }
    /// The kind of the emission's spectrum and its numbers, as they are named and ordered in the scene.
    std::pair<std::string, std::vector<double>> emissionNumbers() const {
        const auto& param = dynamic_cast<const Quenza::ConstantWavelengthDependentParam&>(
            *material<DiffuseMaterial>().base_emission);
        const Quenza::Spectrum* const spectrum = param.spectrum.getPointer();
        if (const auto* const uniform = dynamic_cast<const Quenza::UniformSpectrum*>(spectrum)) {
            return {"uniform", {uniform->value}};
        }
        if (const auto* const peak = dynamic_cast<const Quenza::PeakSpectrum*>(spectrum)) {
            return {"peak", {peak->peak_min, peak->peak_width, peak->peak_value, peak->base_value}};
        }
        if (const auto* const body = dynamic_cast<const Quenza::BlackBodySpectrum*>(spectrum)) {
            return {"blackbody", {body->temperature, body->gain}};
        }
        const auto& colour = dynamic_cast<const Quenza::RGBSpectrum&>(*spectrum);
        return {"rgb", {colour.rgb.x, colour.rgb.y, colour.rgb.z, colour.gamma}};
    }
    bool isEmpty() const { return !background().background_material && !background().emission_scale; }
    std::vector<std::string> layerNames() const {
        std::vector<std::string> names;
        const auto settings = nodes<Quenza::SceneNodeRenderSettings>(Quenza::NODE_RENDER_SETTINGS);
        for (const auto& layer : settings.at(0)->layer_settings) {
            names.push_back(layer->name.toStdString());
        }
        return names;
    }
    void addLightOnLayer(int32_t key) {
        addTag(add(Olight, "light"), PLUGINID_LIGHT_TAG)->GetDataInstance()->SetLong(LIGHT_LAYER, key);
    }
};

using Layers = std::map<int32_t, int32_t>;

} // namespace

TEST_F(BackgroundExportTest, DocumentsWithoutRenderSettingsHaveAWhiteEnvironment) {
    exportScene();
    EXPECT_EQ(emission<Quenza::UniformSpectrum>().value, 1.0);
    EXPECT_FALSE(material<DiffuseMaterial>().albedo);
}

TEST_F(BackgroundExportTest, OtherKindsLeaveTheNodeEmpty) {
    BaseContainer& settings = addVideoPost(1379);
    settings.SetLink(RS_BACKGROUND_LINK, addShining());
    exportScene();
    EXPECT_TRUE(isEmpty());
    EXPECT_TRUE(context().layerMap.empty());
}

TEST_F(BackgroundExportTest, TheSunShinesAlongTheObjectsZAxis) {
    BaseContainer& settings = addVideoPost(RS_BACKGROUND_SUN_SKY);
    settings.SetReal(RS_TURBIDITY, 3.5f);
    exportScene();
    EXPECT_EQ(material<SunSkyMaterial>().sundir, (Quenza::Vec3d{1, 1, 1}));
    EXPECT_EQ(material<SunSkyMaterial>().turbidity, 3.5);
    EXPECT_EQ(material<SunSkyMaterial>().model, "original");
    EXPECT_FALSE(material<SunSkyMaterial>().extra_atmospheric);

    BaseObject* const parent = add(Onull, "parent");
    parent->SetMl({{}, {0, 1, 0}, {-1, 0, 0}, {0, 0, 1}});
    BaseObject* const sun = add(Onull, "sun", parent);
    sun->SetMl({{9, 9, 9}, {1, 0, 0}, {0, 0, 1}, {0.25f, -0.5f, 2}});
    settings.SetLink(RS_SUN_OBJECT, sun);
    settings.SetBool(RS_EXTRA_ATMOSPHERIC, true);
    settings.SetBool(RS_CAPTURED_SKY, true);
    exportScene();
    // In the host's world the axis is (0.5, 0.25, 2): the sun stands on the other side.
    EXPECT_EQ(material<SunSkyMaterial>().sundir, (Quenza::Vec3d{-0.5, -2, -0.25}));
    EXPECT_EQ(material<SunSkyMaterial>().model, "captured-simulation");
    EXPECT_TRUE(material<SunSkyMaterial>().extra_atmospheric);
}

TEST_F(BackgroundExportTest, LayersOfSunAndSkyComeBeforeThoseOfLights) {
    BaseContainer& settings = addVideoPost(RS_BACKGROUND_SUN_SKY);
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
    BaseContainer& settings = addVideoPost(RS_BACKGROUND_MATERIAL);
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
    BaseContainer& settings = addVideoPost(RS_BACKGROUND_MATERIAL);
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
    ASSERT_EQ(material<DiffuseMaterial>().textures.size(), 1u);
    EXPECT_EQ(material<DiffuseMaterial>().textures[0].path, Quenza::String("C:\\sky.hdr"));
    EXPECT_EQ(material<DiffuseMaterial>().emission->getType(), Quenza::WavelengthDependentParam::TEXTURE);
    EXPECT_FALSE(material<DiffuseMaterial>().bump);
    EXPECT_FALSE(material<DiffuseMaterial>().backface_emit);
    EXPECT_EQ(emission<Quenza::RGBSpectrum>().rgb, (Quenza::Vec3d{0.5, 0.25, 0.0}));
    EXPECT_EQ(emission<Quenza::RGBSpectrum>().gamma, 1.25);
    EXPECT_EQ(material<DiffuseMaterial>().name, "background_material");
    EXPECT_FALSE(material<DiffuseMaterial>().albedo);
    EXPECT_FALSE(background().emission_scale);
    EXPECT_EQ(context().layerMap, (Layers{{6, 0}, {3, 1}}));
    EXPECT_EQ(material<DiffuseMaterial>().layer, 0);
    for (const auto& [key, layer] : Layers{{3, 1}, {4, 2}, {6, 0}}) {
        data.SetLong(MAT_EMISSION_LAYER, key);
        const Quenza::Ref<Quenza::Material> exported = exportBackgroundMaterial(context(), shining);
        EXPECT_EQ(dynamic_cast<const DiffuseMaterial&>(*exported).layer, layer) << key;
    }

    data.SetLong(MAT_EMISSION_TYPE, MAT_SPECTRUM_TABULATED);
    data.SetBool(MAT_USE_EMISSION_SCALE, true);
    data.SetLong(MAT_EMISSION_SCALE_MEASURE, MAT_MEASURE_LUMINANCE);
    data.SetReal(MAT_EMISSION_SCALE_VALUE, 5000.0f);
    const struct {
        const char* values;
        std::vector<double> expected;
    } cases[] = {{"0.2 x\t0.4", {0.2, 0.0, 0.4}}, {"0.2", {0.1, 0.1}}, {"", {0.1, 0.1}}};
    for (const auto& test : cases) {
        data.SetString(MAT_EMISSION_TAB_VALUES, test.values);
        exportScene();
        const auto& table = emission<Quenza::RegularSpectrum>();
        EXPECT_EQ(std::vector<double>(table.values.begin(), table.values.end()), test.expected);
        EXPECT_EQ(table.num_values, int32_t(test.expected.size()));
        EXPECT_DOUBLE_EQ(table.start_wavelength, 400e-9);
        EXPECT_DOUBLE_EQ(table.end_wavelength, 700e-9);
    }
    ASSERT_TRUE(background().emission_scale);
    EXPECT_EQ(background().emission_scale->measure, Quenza::EmissionScale::LUMINANCE);
    EXPECT_EQ(background().emission_scale->value, 5000.0);
    EXPECT_FALSE(background().emission_scale->getMaterialUID().isValid());
}

TEST_F(BackgroundExportTest, EachKindOfEmissionHasParametersOfItsOwn) {
    BaseMaterial* const shining = addShining();
    addVideoPost(RS_BACKGROUND_MATERIAL).SetLink(RS_BACKGROUND_LINK, shining);
    BaseContainer& data = *shining->GetDataInstance();
    data.SetReal(MAT_EMISSION_UNIFORM, 12.0f);
    data.SetReal(MAT_EMISSION_PEAK_MIN, 450.0f);
    data.SetReal(MAT_EMISSION_PEAK_WIDTH, 20.0f);
    data.SetReal(MAT_EMISSION_PEAK_VALUE, 3.0f);
    data.SetReal(MAT_EMISSION_BASE_VALUE, 0.125f);
    data.SetReal(MAT_EMISSION_TEMPERATURE, 3200.0f);
    data.SetReal(MAT_EMISSION_GAIN, 0.5f);
    const struct {
        int32_t kind;
        const char* kindName;
        std::vector<double> values;
    } cases[] = {
        {MAT_SPECTRUM_UNIFORM, "uniform", {12.0}},
        {MAT_SPECTRUM_PEAK, "peak", {450.0, 20.0, 3.0, 0.125}},
        {MAT_SPECTRUM_BLACKBODY, "blackbody", {3200.0, 0.5}},
        {MAT_SPECTRUM_RGB, "rgb", {2.0, 1.0, 0.0, 1.5}},
        {99, "rgb", {2.0, 1.0, 0.0, 1.5}},
    };
    data.SetVector(MAT_EMISSION_COLOUR, {1.0f, 0.5f, 0.0f});
    data.SetReal(MAT_EMISSION_BRIGHTNESS, 2.0f);
    data.SetReal(MAT_EMISSION_GAMMA, 1.5f);
    for (const auto& test : cases) {
        data.SetLong(MAT_EMISSION_TYPE, test.kind);
        exportScene();
        EXPECT_EQ(emissionNumbers(),
                  (std::pair<std::string, std::vector<double>>(test.kindName, test.values)))
            << test.kind;
    }
    data.SetBool(MAT_EMISSION_ENABLED, false);
    EXPECT_FALSE(exportBaseEmission(data));
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
