// SPDX-License-Identifier: MIT
#include "host/ids.h"
#include "materials/channels.h"
#include "materials/material_export.h"
#include "materials/material_fixture.h"
#include "materials/material_kinds.h"
#include "materials/nk_names.h"
#include "scene/materials/phong_material.h"
#include "scene/scene_node_material.h"

namespace {

using Quenza::SceneNodeUID;
using Quenza::String;

using MaterialExport = MaterialTest;

const int32_t KINDS[] = {MAT_KIND_DIFFUSE,
                         MAT_KIND_ORENNAYAR,
                         MAT_KIND_PHONG,
                         MAT_KIND_DIFFUSE_TRANSMITTER,
                         MAT_KIND_SPECULAR,
                         MAT_KIND_BLEND,
                         MAT_KIND_GLOSSY_TRANSPARENT,
                         MAT_KIND_NULL,
                         MAT_KIND_COATING,
                         MAT_KIND_DOUBLE_SIDED_THIN};

/// Switches on all that the kind shows, but for the mix.
void enableAll(BaseContainer& data) {
    for (const int32_t flag : kindInfo(data.GetLong(MAT_KIND))->visibleFlags) {
        data.SetBool(flag, flag != MAT_BLEND_ENABLED || data.GetLong(MAT_KIND) == MAT_KIND_BLEND);
    }
}

TEST_F(MaterialExport, WritesEveryKindByItsConstants) {
    BaseMaterial* const substrate = addMaterial("Substrate");
    for (const int32_t kind : KINDS) {
        BaseMaterial* const material = addMaterial(("Kind " + std::to_string(kind)).c_str(), kind);
        BaseContainer& values = data(material);
        enableAll(values);
        values.SetLong(MAT_EMISSION_LAYER, 4);
        values.SetBool(MAT_BACKFACE_EMIT, true);
        values.SetBool(MAT_SHADOW_CATCHER, true);
        values.SetString(MAT_SPECULAR_PRIVATE_DATA, "kept <as> it is");
        values.SetBool(MAT_PHONG_USE_NK, true);
        for (const int32_t link : {MAT_BLEND_MATERIAL_A, MAT_COATING_SUBSTRATE, MAT_THIN_BACK}) {
            values.SetLink(link, substrate);
        }
        exportMaterial(material);
    }
    EXPECT_EQ(xml(), golden("kinds.xml", xml()));
}

TEST_F(MaterialExport, WritesBitmapsOfEveryChannel) {
    // One kind for each channel: a texture is appended to the list of its own body.
    for (const Channel& channel : channels()) {
        for (const int32_t kind : KINDS) {
            const KindInfo& info = *kindInfo(kind);
            if (!info.hasChannel(channel.enable) ||
                (channel.id == ChannelId::BLEND && kind != MAT_KIND_BLEND)) {
                continue;
            }
            SCOPED_TRACE(std::string(channel.name) + " of " + std::to_string(kind));
            BaseMaterial* const material = addMaterial("M", kind);
            BaseContainer& values = data(material);
            enableAll(values);
            const std::string file = addImageFile("tex/a.png");
            addBitmap(material, channel.shader, "a.png");
            values.SetReal(channel.textureGamma, 1.5f);
            values.SetReal(channel.a, 0.25f);
            values.SetReal(channel.b, 0.5f);
            values.SetReal(channel.c, 0.75f);
            if (channel.smooth != 0) {
                values.SetBool(channel.smooth, true);
            }
            const std::string text = xml(exportMaterial(material));
            const std::string smooth = channel.smooth != 0 ? "true" : "false";
            EXPECT_NE(text.find("<path>tex/a.png</path>\n\t\t\t<a>0.25</a>\n\t\t\t<b>0.5</b>\n"
                                "\t\t\t<c>0.75</c>\n\t\t\t<uv_set_index>0</uv_set_index>\n"
                                "\t\t\t<exponent>1.5</exponent>"),
                      std::string::npos)
                << text;
            EXPECT_NE(text.find("<smooth>" + smooth + "</smooth>"), std::string::npos) << text;
            EXPECT_NE(text.find("<texture_index>0</texture_index>"), std::string::npos) << text;
            EXPECT_EQ(text.find("<texture_index>1"), std::string::npos) << text;
        }
    }
}

TEST_F(MaterialExport, LeavesOutChannelsThatAreOff) {
    for (const int32_t kind : KINDS) {
        BaseMaterial* const material = addMaterial("Off", kind);
        BaseContainer& values = data(material);
        for (const Channel& channel : channels()) {
            values.SetBool(channel.enable, false);
            addBitmap(material, channel.shader, "a.png");
        }
        const std::string text = xml(exportMaterial(material));
        EXPECT_EQ(text.find("texture"), std::string::npos) << text;
        EXPECT_EQ(text.find("constant"), std::string::npos) << text;
    }
}

TEST_F(MaterialExport, TreatsTabulatedChannelsAsRGB) {
    BaseMaterial* const material = addMaterial("Thin", MAT_KIND_DOUBLE_SIDED_THIN);
    data(material).SetBool(MAT_CHANNEL_16000_ENABLED, true);
    data(material).SetLong(MAT_TRANSMITTANCE + MAT_OFFSET_TYPE, MAT_SPECTRUM_TABULATED);
    data(material).SetVector(MAT_TRANSMITTANCE + MAT_OFFSET_COLOUR, Vector(0.5f, 0.25f, 1.0f));
    data(material).SetReal(MAT_TRANSMITTANCE + MAT_OFFSET_BRIGHTNESS, 0.5f);
    const std::string text = xml(exportMaterial(material));
    EXPECT_NE(text.find("<rgb>0.25 0.125 0.5</rgb>"), std::string::npos) << text;
}

TEST_F(MaterialExport, SwitchesAPhongToMetal) {
    BaseMaterial* const material = addMaterial("Metal", MAT_KIND_PHONG);
    data(material).SetBool(MAT_PHONG_SPECULAR, true);
    const std::string text = xml(exportMaterial(material));
    EXPECT_NE(text.find("<specular_reflectivity>"), std::string::npos);
    EXPECT_EQ(text.find("<diffuse_albedo>"), std::string::npos);
}

TEST_F(MaterialExport, TakesTheFirstMetalForAnIndexOutsideTheTable) {
    const std::pair<int32_t, const char*> cases[] = {{0, "nkdata/Ag.nk"},
                                                     {1, "nkdata/Al.nk"},
                                                     {152, "nkdata/Sicrir.nk"},
                                                     {153, "nkdata/Ag.nk"},
                                                     {-1, "nkdata/Ag.nk"},
                                                     {2147483647, "nkdata/Ag.nk"},
                                                     {-2147483647 - 1, "nkdata/Ag.nk"}};
    for (const auto& [index, expected] : cases) {
        BaseMaterial* const material = addMaterial("Metal", MAT_KIND_PHONG);
        data(material).SetBool(MAT_PHONG_USE_NK, true);
        data(material).SetLong(MAT_PHONG_NK_INDEX, index);
        const auto* const node =
            static_cast<Quenza::SceneNodeMaterial*>(scene().getChildByUID(exportMaterial(material)));
        const auto& body = static_cast<const Quenza::PhongMaterial&>(*node->material);
        EXPECT_EQ(body.nk_data, String(expected)) << index;
    }
}

TEST_F(MaterialExport, KeepsTheShellOfAnUnknownKind) {
    BaseMaterial* const material = addMaterial("Unknown", 7);
    EXPECT_EQ(xml(exportMaterial(material)),
              "<material>\n\t<uid>2</uid>\n\t<name>Unknown</name>\n</material>\n");
}

TEST_F(MaterialExport, ExportsAMaterialOnce) {
    BaseMaterial* const material = addMaterial("Once");
    EXPECT_EQ(exportMaterial(material), exportMaterial(material));
    EXPECT_EQ(nodeNames(), "1 nullMat: null_material\n2 Once: diffuse\n");
    EXPECT_FALSE(exportMaterial(nullptr).isValid());
}

TEST_F(MaterialExport, MixesWithAPartnerOrWithNothing) {
    BaseMaterial* const partner = addMaterial("Partner");
    BaseMaterial* const mixed = addMaterial("Mixed", MAT_KIND_SPECULAR);
    data(mixed).SetBool(MAT_BLEND_ENABLED, true);
    data(mixed).SetLink(MAT_BLEND_MATERIAL_A, partner);
    data(mixed).SetBool(MAT_SHADOW_CATCHER, true);
    data(mixed).SetBool(MAT_BLEND_STEP, true);
    const SceneNodeUID uid = exportMaterial(mixed);
    EXPECT_EQ(nodeNames(), "1 nullMat: null_material\n"
                           "2 Mixed_blendA: specular\n"
                           "3 MedMixed_blendA: medium\n"
                           "4 Partner: diffuse\n"
                           "5 Mixed: blend\n");
    EXPECT_EQ(uid.value(), 5u);
    EXPECT_EQ(exportMaterial(mixed), uid);
    EXPECT_EQ(xml(uid), "<material>\n\t<uid>5</uid>\n\t<name>Mixed</name>\n\t<blend>\n"
                        "\t\t<a_mat_uid>2</a_mat_uid>\n\t\t<b_mat_uid>4</b_mat_uid>\n"
                        "\t\t<blend>\n\t\t\t<constant>\n\t\t\t\t0.5\n\t\t\t</constant>\n\t\t</blend>\n"
                        "\t\t<step_blend>true</step_blend>\n\t</blend>\n"
                        "\t<shadow_catcher>true</shadow_catcher>\n</material>\n");
    EXPECT_EQ(xml(SceneNodeUID(2)).find("shadow_catcher"), std::string::npos);

    BaseMaterial* const fading = addMaterial("Fading");
    data(fading).SetBool(MAT_BLEND_ENABLED, true);
    const std::string text = xml(exportMaterial(fading));
    EXPECT_NE(text.find("<a_mat_uid>6</a_mat_uid>\n\t\t<b_mat_uid>1</b_mat_uid>"), std::string::npos) << text;
}

TEST_F(MaterialExport, NamesANullMaterialAsTheScenesOwn) {
    BaseMaterial* const plain = addMaterial("Nothing", MAT_KIND_NULL);
    BaseMaterial* const mixed = addMaterial("Mask", MAT_KIND_NULL);
    data(mixed).SetBool(MAT_BLEND_ENABLED, true);
    exportMaterial(plain);
    exportMaterial(mixed);
    EXPECT_EQ(nodeNames(), "1 nullMat: null_material\n2 nullMat: null_material\n"
                           "3 nullMat: null_material\n4 Mask: blend\n");
}

TEST_F(MaterialExport, FillsEmptyLinks) {
    const std::pair<int32_t, std::vector<const char*>> cases[] = {
        {MAT_KIND_BLEND, {"<a_mat_uid>1</a_mat_uid>", "<b_mat_uid>1</b_mat_uid>"}},
        {MAT_KIND_COATING, {"<substrate_material_uid>4294967295</substrate_material_uid>"}},
        {MAT_KIND_DOUBLE_SIDED_THIN,
         {"<front_material_uid>4294967295</front_material_uid>",
          "<back_material_uid>4294967295</back_material_uid>"}},
    };
    for (const auto& [kind, expected] : cases) {
        const std::string text = xml(exportMaterial(addMaterial("Empty", kind)));
        for (const char* const element : expected) {
            EXPECT_NE(text.find(element), std::string::npos) << text;
        }
    }
}

TEST_F(MaterialExport, ReplacesAllButSkippedMaterialsByClay) {
    overrideMaterials = true;
    BaseMaterial* const glass = addMaterial("Glass", MAT_KIND_SPECULAR);
    addImageFile("bump.png");
    data(glass).SetBool(MAT_BUMP_ENABLED, true);
    addBitmap(glass, MAT_BUMP_SHADER, "bump.png");
    data(glass).SetBool(MAT_EMISSION_ENABLED, true);
    data(glass).SetBool(MAT_BACKFACE_EMIT, true);
    const std::string clay = xml(exportMaterial(glass));
    EXPECT_NE(clay.find("<oren_nayar>"), std::string::npos);
    EXPECT_NE(clay.find("<rgb>0.7099999785423279 0.6200000047683716 0.5299999713897705</rgb>"),
              std::string::npos)
        << clay;
    EXPECT_NE(clay.find("<sigma>\n\t\t\t<constant>0.3</constant>"), std::string::npos) << clay;
    for (const char* const kept : {"<bump>", "<base_emission>", "<path>bump.png</path>", "<backface_emit>"}) {
        EXPECT_NE(clay.find(kept), std::string::npos) << kept;
    }

    BaseMaterial* const coating = addMaterial("Coating", MAT_KIND_COATING);
    data(coating).SetLink(MAT_COATING_SUBSTRATE, addMaterial("Not exported"));
    BaseMaterial* const skipping = addMaterial("Skipping", MAT_KIND_SPECULAR);
    data(skipping).SetBool(MAT_SKIP_OVERRIDE, true);
    BaseMaterial* const blend = addMaterial("Blend", MAT_KIND_BLEND);
    BaseMaterial* const nothing = addMaterial("Nothing", MAT_KIND_NULL);
    data(nothing).SetBool(MAT_BLEND_ENABLED, true);
    for (BaseMaterial* const material : {coating, skipping, blend, nothing}) {
        exportMaterial(material);
    }
    EXPECT_EQ(nodeNames(), "1 nullMat: null_material\n2 Glass: oren_nayar\n3 Coating: oren_nayar\n"
                           "4 Skipping: specular\n5 MedSkipping: medium\n6 Blend: blend\n"
                           "7 Nothing_blendA: oren_nayar\n8 Nothing: blend\n");
}

TEST_F(MaterialExport, NumbersTheLayersOfShiningMaterialsInTheOrderOfTheirUse) {
    for (const int32_t layer : {5, 2, 5}) {
        BaseMaterial* const material = addMaterial("Lamp");
        data(material).SetLong(MAT_EMISSION_LAYER, layer);
        data(material).SetBool(MAT_EMISSION_ENABLED, true);
        exportMaterial(material);
    }
    BaseMaterial* const dark = addMaterial("Dark");
    data(dark).SetLong(MAT_EMISSION_LAYER, 9);
    exportMaterial(dark);
    EXPECT_EQ(context().layerMap, (std::map<int32_t, int32_t>{{5, 0}, {2, 1}}));
}

} // namespace
