// SPDX-License-Identifier: MIT
#include "host/ids.h"
#include "materials/channels.h"
#include "materials/material_export.h"
#include "materials/material_fixture.h"
#include "materials/material_kinds.h"

namespace {

using Quenza::SceneNodeUID;

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

} // namespace
