// SPDX-License-Identifier: MIT
#include "reading/material_parser.h"

#include "reading/medium_parser.h"
#include "reading/parsed_element.h"
#include "reading/parser_state.h"
#include "scene/material_samples.h"
#include "scene/scene_node_medium.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>
#include <string>

namespace Quenza {
namespace {

Ref<Material> makeSum() {
    const Ref<SumMaterial> sum = new SumMaterial;
    for (const u32 uid : {66u, 67u, 66u}) {
        sum->materials.push_back(nullptr);
        sum->mat_uids.push_back(SceneNodeUID(uid));
        sum->weights.push_back(new ConstantWavelengthIndependentParam(uid / 100.0));
    }
    return sum;
}

Ref<SceneNodeMaterial> read(ParserState& state, const std::string& text) {
    return parseMaterial(state, ParsedElement(text));
}

/// What a material with this inside becomes, written again.
std::string rewritten(const std::string& children) {
    ParserState state;
    return xmlText(*read(state, "<material>" + children + "</material>"));
}

TEST(MaterialParser, ReadsWhatIsWritten) {
    const Ref<Material> materials[] = {makeBlend(),         makeDiffuse(),       makeTransmitter(),
                                       new NullMaterial,    makeOrenNayar(),     makePhong(),
                                       makeSpecular(),      makeGlossy(),        new ExitPortalMaterial,
                                       makeSum(),           makeSunSky(),        makePlugin(),
                                       makeCoating(),       makeThin(),          new SumMaterial,
                                       new DiffuseMaterial, new CoatingMaterial, new SpecularMaterial};
    for (const Ref<Material>& material : materials) {
        // As many as the samples' indices want.
        material->textures = Vector<Texture>(95, Texture());
        material->textures[3].path = "three.png";
        material->shared_shader_info = new ShaderInfo("shared");
        material->backface_emit = true;
        material->shadow_catcher = true;
        const Ref<SceneNodeMaterial> node = makeNode(material, 12, "  m & n");
        const std::string text = xmlText(*node);
        ParserState state;
        EXPECT_EQ(xmlText(*read(state, text)), text);
        for (const std::string& strange : withStrangers(text, text.rfind("<smooth>")))
            EXPECT_TRUE(refusal(strange, [&](const TiXmlElement& e) { parseMaterial(state, e); })
                            .starts_with(STRANGER))
                << strange;
    }
}

TEST(MaterialParser, ReadsMaterialsThatReferByName) {
    XMLWriteOptions by_name;
    by_name.write_uids = false;
    ParserState state;
    read(state, "<material><name>A</name><null_material/></material>");
    const Ref<SceneNodeMaterial> a =
        read(state, "<material><name>A</name><uid>4</uid><exit_portal/></material>");
    const Ref<SceneNodeMedium> medium =
        parseMedium(state, ParsedElement("<medium><name>Med</name><basic/></medium>"));
    const char* const bodies[] = {
        "\t<blend>\n\t\t<a_name>A</a_name>\n\t\t<b_name></b_name>\n\t\t<step_blend>false</step_blend>\n\t</"
        "blend>\n",
        "\t<coating>\n\t\t<layer>0</layer>\n\t\t<ior>1.5</ior>\n\t\t<interference>false</interference>\n"
        "\t\t<substrate_material_name>A</substrate_material_name>\n\t</coating>\n",
        "\t<double_sided_thin>\n\t\t<layer>0</layer>\n\t\t<front_material_name>A</front_material_name>\n"
        "\t\t<back_material_name>A</back_material_name>\n\t</double_sided_thin>\n",
        "\t<sum>\n\t\t<mat>\n\t\t\t<mat_name>A</mat_name>\n\t\t\t<weight>\n\t\t\t\t<constant>1</constant>\n"
        "\t\t\t</weight>\n\t\t</mat>\n\t</sum>\n",
        "\t<specular>\n\t\t<internal_medium_name>Med</internal_medium_name>\n"
        "\t\t<transparent>true</transparent>\n\t\t<layer>0</layer>\n\t</specular>\n",
    };
    for (const char* const body : bodies) {
        const std::string text = "<material>\n\t<name>N</name>\n" + std::string(body) + "</material>\n";
        EXPECT_EQ(xmlText(*read(state, text), 0, by_name), text);
    }
    const Ref<SceneNodeMaterial> blend = read(
        state,
        "<material><blend><a_name>A</a_name><b_mat_uid>4</b_mat_uid><blend><constant>0</constant></blend>"
        "</blend></material>");
    const BlendMaterial& body = dynamic_cast<const BlendMaterial&>(*blend->material);
    EXPECT_TRUE(body.a_mat == a) << "the later material of a name";
    EXPECT_EQ(body.b_mat_uid.value(), 4u);
}

TEST(MaterialParser, TakesOlderForms) {
    const std::string spectrum = "<rgb><rgb>1 0.5 0</rgb><gamma>2.2</gamma></rgb>";
    const std::string constant = "<constant>" + spectrum + "</constant>";
    const std::string texture = "<texture><path>a.png</path></texture>";
    const std::string first = "<texture><texture_index>0</texture_index></texture>";
    const struct {
        std::string older;
        std::string newer;
    } rows[] = {
        {"<diffuse><colour>1 0.5 0</colour></diffuse>",
         "<diffuse><albedo>" + constant + "</albedo></diffuse>"},
        {"<oren_nayar><albedo_spectrum>" + spectrum + "</albedo_spectrum></oren_nayar>",
         "<oren_nayar><albedo>" + constant + "</albedo></oren_nayar>"},
        {"<diffuse_transmitter>" + texture +
             "<albedo_texture><texture_index>0</texture_index></albedo_texture>"
             "</diffuse_transmitter>",
         "<diffuse_transmitter>" + texture + "<albedo>" + first + "</albedo></diffuse_transmitter>"},
        {"<phong><albedo_texture><path>a.png</path></albedo_texture></phong>",
         "<phong>" + texture + "<diffuse_albedo>" + first + "</diffuse_albedo></phong>"},
        {"<diffuse><bump_map><path>a.png</path></bump_map><displacement_map><path>a.png</path>"
         "</displacement_map></diffuse>",
         "<diffuse>" + texture + texture + "<bump>" + first +
             "</bump><displacement><texture><texture_index>1</texture_index></texture></displacement></"
             "diffuse>"},
        {"<blend><a_mat_uid>1</a_mat_uid><b_mat_uid>2</b_mat_uid><blend_factor>0.5</blend_factor></blend>",
         "<blend><a_mat_uid>1</a_mat_uid><b_mat_uid>2</b_mat_uid><blend><constant>0.5</constant></blend></"
         "blend>"},
        {"<blend><a_mat_uid>1</a_mat_uid><b_mat_uid>2</b_mat_uid><blend_map><path>a.png</path></blend_map></"
         "blend>",
         "<blend>" + texture + "<a_mat_uid>1</a_mat_uid><b_mat_uid>2</b_mat_uid><blend>" + first +
             "</blend></blend>"},
        {"<plugin><plugin_name>p</plugin_name><param><x/></param><param/></plugin>",
         "<plugin><plugin_name>p</plugin_name></plugin>"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(rewritten(row.older), rewritten(row.newer)) << row.older;
}

} // namespace
} // namespace Quenza
