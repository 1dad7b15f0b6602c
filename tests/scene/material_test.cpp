// SPDX-License-Identifier: MIT
#include "scene/material_samples.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

#include <sstream>

namespace Quenza {
namespace {

const char* const SURFACE =
    "<bump>#90\n<displacement>#91\n<base_emission>#92\n<emission>#93\n<normal_map>#94\n";

/// The body's elements one to a line without their indent, texture parameters as "<element>#index".
std::string bodyOutline(Material& material) {
    BufferOStream stream;
    material.writeBodyToXML(stream, 0, {});
    std::string text = stream.getBuffer().toStdString();
    for (i32 index = 0; index < 100; ++index) {
        const std::string texture = "\n" + xmlText(*scalar(index), 2);
        for (std::size_t at; (at = text.find(texture)) != std::string::npos;) {
            const std::size_t name = text.rfind('<', at) + 1;
            const std::string close = "\t</" + text.substr(name, at - name);
            EXPECT_EQ(text.compare(at + texture.size(), close.size(), close), 0);
            text.replace(at, texture.size() + close.size(), "#" + std::to_string(index));
        }
    }
    std::istringstream lines(text);
    std::string outline;
    for (std::string line; std::getline(lines, line);)
        outline += line.substr(1) + "\n";
    return outline;
}

TEST(Material, BodiesOfAllClasses) {
    const std::string surface = SURFACE;
    struct Case {
        Ref<Material> material;
        u32 type;
        const char* element;
        u32 layer;
        bool displacement;
        std::string body;
    };
    const Case cases[] = {
        {makeBlend(), 0, "blend", 0, false,
         "<a_mat_uid>66</a_mat_uid>\n<b_mat_uid>67</b_mat_uid>\n<blend>#1\n<step_blend>true</step_blend>\n"},
        {makeDiffuse(), 1, "diffuse", 7, true,
         "<albedo>#1\n" + surface +
             "<random_triangle_colours>true</random_triangle_colours>\n<layer>7</layer>\n"},
        {makeTransmitter(), 2, "diffuse_transmitter", 7, true,
         "<albedo>#1\n" + surface + "<layer>7</layer>\n<internal_medium_uid>55</internal_medium_uid>\n"},
        {new NullMaterial, 3, "null_material", 0, false, ""},
        {makeOrenNayar(), 4, "oren_nayar", 7, true,
         "<albedo>#1\n<sigma>#2\n" + surface + "<layer>7</layer>\n"},
        {makePhong(), 5, "phong", 7, true,
         "<diffuse_albedo>#1\n<specular_reflectivity>#2\n<exponent>#3\n" + surface +
             "<fresnel_scale>#4\n<layer>7</layer>\n<ior>1.6</ior>\n<nk_data>nkdata/Au.nk</nk_data>\n"},
        {makeSpecular(), 6, "specular", 7, true,
         "<internal_medium_uid>55</internal_medium_uid>\n<transparent>false</transparent>\n"
         "<absorption_layer_transmittance>#1\n" +
             surface +
             "<layer>7</layer>\n<tabulated_internal_reflection_coefficient>\n"
             "\t<start_wavelength>0</start_wavelength>\n\t<end_wavelength>0</end_wavelength>\n"
             "\t<num_rows>0</num_rows>\n\t<num_columns>0</num_columns>\n\t<values></values>\n"
             "</tabulated_internal_reflection_coefficient>\n<private_data>x&lt;y</private_data>\n"},
        {makeGlossy(), 7, "glossy_transparent", 7, true,
         "<internal_medium_uid>55</internal_medium_uid>\n<exponent>#1\n<absorption_layer_transmittance>#2\n" +
             surface + "<layer>7</layer>\n"},
        {new ExitPortalMaterial, 8, "exit_portal", 0, false, ""},
        {new SumMaterial, 9, "sum", 0, false, ""},
        {makeSunSky(), 10, "sunsky", 3, false,
         "<sundir>1 0.5 0</sundir>\n<turbidity>2</turbidity>\n<extra_atmospheric>false</extra_atmospheric>\n"
         "<enable_sky>true</enable_sky>\n<sun_layer>2</sun_layer>\n<sky_layer>3</sky_layer>\n"
         "<model>original</model>\n"},
        {makePlugin(), 11, "plugin", 4, false,
         "<layer>4</layer>\n<plugin_name>p</plugin_name>\n<material_name>m</material_name>\n"},
        {makeCoating(), 12, "coating", 7, true,
         "<absorption>#1\n<thickness>#2\n<roughness>#3\n" + surface +
             "<layer>7</layer>\n<fresnel_scale>#4\n<ior>1.5</ior>\n<interference>true</interference>\n"
             "<substrate_material_uid>66</substrate_material_uid>\n"},
        {makeThin(), 13, "double_sided_thin", 7, true,
         surface + "<layer>7</layer>\n<front_material_uid>66</front_material_uid>\n"
                   "<back_material_uid>67</back_material_uid>\n<r_f>#1\n<transmittance>#2\n"
                   "<front_roughness>#3\n<back_roughness>#4\n<front_fresnel_scale>#5\n"
                   "<back_fresnel_scale>#6\n"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.element);
        EXPECT_EQ(c.material->getType(), c.type);
        EXPECT_EQ(c.material->getTypeName().toStdString(), c.element);
        EXPECT_EQ(c.material->getLayer(), c.layer);
        EXPECT_EQ(c.material->hasDisplacement(), c.displacement);
        EXPECT_EQ(bodyOutline(*c.material), c.body);
    }
}

TEST(Material, AbsentFieldsWriteNothing) {
    const std::string no_layer = "<layer>0</layer>\n";
    EXPECT_EQ(bodyOutline(*Ref<OrenNayarMaterial>(new OrenNayarMaterial)), no_layer);
    EXPECT_EQ(bodyOutline(*Ref<DiffuseTransmitter>(new DiffuseTransmitter)), no_layer);
    EXPECT_EQ(bodyOutline(*Ref<PhongMaterial>(new PhongMaterial)), no_layer + "<ior>1.5</ior>\n");
    EXPECT_EQ(bodyOutline(*Ref<SpecularMaterial>(new SpecularMaterial)),
              "<transparent>true</transparent>\n" + no_layer);
}

TEST(Material, NegativeLayersCountAsTheLowest) {
    PluginMaterial material;
    material.layer = -1;
    EXPECT_EQ(material.getLayer(), 0u);
}

TEST(Material, FrameHoldsTexturesSharedShaderAndFlags) {
    Ref<DiffuseMaterial> material = new DiffuseMaterial;
    material->albedo = new ConstantWavelengthDependentParam(new UniformSpectrum(0.5));
    material->textures.push_back(Texture());
    material->shared_shader_info = new ShaderInfo("s");
    material->backface_emit = true;
    material->shadow_catcher = true;
    const Ref<SceneNodeMaterial> node = makeNode(material, 12, "  m");
    const std::string texture = xmlText(material->textures[0], 3);
    const std::string text = "\t<material>\n"
                             "\t\t<uid>12</uid>\n"
                             "\t\t<name><![CDATA[  m]]></name>\n"
                             "\t\t<diffuse>\n" +
                             texture +
                             "\t\t\t<shared_shader_info>\n"
                             "\t\t\t<shader><![CDATA[s]]></shader>\n"
                             "\t\t\t</shared_shader_info>\n"
                             "\t\t\t<albedo>\n"
                             "\t\t\t\t<constant>\n"
                             "\t\t\t\t\t<uniform>\n"
                             "\t\t\t\t\t\t<value>0.5</value>\n"
                             "\t\t\t\t\t</uniform>\n"
                             "\t\t\t\t</constant>\n"
                             "\t\t\t</albedo>\n"
                             "\t\t\t<random_triangle_colours>false</random_triangle_colours>\n"
                             "\t\t\t<layer>0</layer>\n"
                             "\t\t</diffuse>\n"
                             "\t\t<backface_emit>true</backface_emit>\n"
                             "\t\t<shadow_catcher>true</shadow_catcher>\n"
                             "\t</material>\n";
    EXPECT_EQ(xmlText(*node, 1), text);
}

TEST(Material, EmptySharedShaderAndUIDAreLeftOut) {
    Ref<NullMaterial> material = new NullMaterial;
    material->shared_shader_info = new ShaderInfo;
    material->shared_shader_info->textures.push_back(Texture());
    XMLWriteOptions by_name;
    by_name.write_uids = false;
    EXPECT_EQ(xmlText(*makeNode(material, 12, "nullMat"), 0, by_name),
              "<material>\n\t<name>nullMat</name>\n\t<null_material>\n\t</null_material>\n</material>\n");
}

TEST(Material, TheNodesUIDWinsOverTheStoredOne) {
    Ref<BlendMaterial> blend = new BlendMaterial;
    blend->a_mat = makeNode(new NullMaterial, 1, "A");
    blend->a_mat_uid = SceneNodeUID(99);
    EXPECT_EQ(bodyOutline(*blend), "<a_mat_uid>1</a_mat_uid>\n<b_mat_uid>4294967295</b_mat_uid>\n"
                                   "<step_blend>false</step_blend>\n");
}

TEST(SumMaterial, WritesEachEntryWithItsWeight) {
    Ref<SumMaterial> sum = new SumMaterial;
    sum->materials = {makeNode(new NullMaterial, 1, "A"), {}, {}};
    sum->mat_uids = {SceneNodeUID(98), SceneNodeUID(99)};
    sum->weights = {scalar(5), new ConstantWavelengthIndependentParam(0.25), scalar(6)};
    const std::string five = xmlText(*scalar(5), 4), six = xmlText(*scalar(6), 4);
    BufferOStream stream;
    sum->writeBodyToXML(stream, 1, {});
    EXPECT_EQ(stream.getBuffer().toStdString(),
              "\t\t<mat>\n\t\t\t<mat_uid>1</mat_uid>\n\t\t\t<weight>\n" + five +
                  "\t\t\t</weight>\n\t\t</mat>\n"
                  "\t\t<mat>\n\t\t\t<mat_uid>99</mat_uid>\n\t\t\t<weight>\n"
                  "\t\t\t\t<constant>0.25</constant>\n\t\t\t</weight>\n\t\t</mat>\n"
                  "\t\t<mat>\n\t\t\t<mat_uid>4294967295</mat_uid>\n\t\t\t<weight>\n" +
                  six + "\t\t\t</weight>\n\t\t</mat>\n");
}

TEST(SumMaterial, ChecksItsVectorsWhenWriting) {
    Ref<SumMaterial> sum = new SumMaterial;
    sum->materials.push_back(makeNode(new NullMaterial, 1, "A"));
    EXPECT_EQ(thrownText([&] { bodyOutline(*sum); }), "num materials != num weights.");
    sum->weights.push_back({});
    EXPECT_EQ(thrownText([&] { bodyOutline(*sum); }), "Weight was null.");
}

} // namespace
} // namespace Quenza
