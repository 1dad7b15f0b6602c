// SPDX-License-Identifier: MIT
#include "materials/material_fixture.h"

#include <algorithm>

namespace {

using MaterialCycles = MaterialTest;

TEST_F(MaterialCycles, EndWhereTheyBegan) {
    const struct {
        const char* what;
        int32_t kind;
        int32_t link;
        bool isMix;
        const char* expected;
    } cases[] = {
        {"blends", MAT_KIND_BLEND, MAT_BLEND_MATERIAL_A, false,
         "1 nullMat: null_material\n2 A: blend\n3 B: blend\n"},
        {"second materials of blends", MAT_KIND_BLEND, MAT_BLEND_MATERIAL_B, false,
         "1 nullMat: null_material\n2 A: blend\n3 B: blend\n"},
        {"coatings", MAT_KIND_COATING, MAT_COATING_SUBSTRATE, false,
         "1 nullMat: null_material\n2 A: coating\n3 B: coating\n"},
        {"sheets", MAT_KIND_DOUBLE_SIDED_THIN, MAT_THIN_FRONT, false,
         "1 nullMat: null_material\n2 A: double_sided_thin\n3 B: double_sided_thin\n"},
        {"mixes", MAT_KIND_DIFFUSE, MAT_BLEND_MATERIAL_A, true,
         "1 nullMat: null_material\n2 A_blendA: diffuse\n3 B_blendA: diffuse\n4 B: blend\n5 A: blend\n"},
        {"mixed coatings", MAT_KIND_COATING, MAT_COATING_SUBSTRATE, true,
         "1 nullMat: null_material\n2 A_blendA: coating\n3 B_blendA: coating\n4 B: blend\n5 A: blend\n"},
    };
    for (const auto& [what, kind, link, isMix, expected] : cases) {
        SCOPED_TRACE(what);
        endExport();
        BaseMaterial* const a = addMaterial("A", kind);
        BaseMaterial* const b = addMaterial("B", kind);
        for (BaseMaterial* const material : {a, b}) {
            if (isMix) {
                data(material).SetBool(MAT_BLEND_ENABLED, true);
            }
        }
        data(a).SetLink(link, b);
        data(b).SetLink(link, a);
        EXPECT_TRUE(exportMaterial(a).isValid());
        EXPECT_EQ(nodeNames(), expected);
    }
}

TEST_F(MaterialCycles, DontMakeLongChainsOverflow) {
    constexpr int32_t COUNT = 20000;
    BaseMaterial* behind = nullptr;
    BaseMaterial* medium = nullptr;
    std::vector<BaseMaterial*> all;
    for (int32_t i = 0; i < COUNT; ++i) {
        const bool isCoating = i % 2 == 0;
        BaseMaterial* const material = BaseMaterial::Alloc(PLUGINID_MATERIAL);
        document()->InsertMaterial(material);
        data(material).SetLong(MAT_KIND, isCoating ? MAT_KIND_COATING : MAT_KIND_SPECULAR);
        data(material).SetBool(MAT_BLEND_ENABLED, !isCoating);
        data(material).SetLink(isCoating ? MAT_COATING_SUBSTRATE : MAT_BLEND_MATERIAL_A, behind);
        if (!isCoating) {
            data(material).SetLink(MAT_MEDIUM_SOURCE, medium);
            medium = material;
        }
        behind = material;
    }
    EXPECT_TRUE(exportMaterial(behind).isValid());
    // Each coating is one node; each mix two, with one medium for all of them.
    EXPECT_EQ(scene().getChildren().size(), uint64_t(1 + COUNT / 2 + COUNT / 2 * 2 + 1));
}

/// Materials A, B and so on whose media come from each other: "AB" says that A takes that of B.
struct MediumCase {
    const char* links;
    /// In the order of their export.
    const char* exported;
    /// The media in the scene, then that of each exported material.
    const char* media;
    const char* used;
};

class MediumLinks : public MaterialTest, public ::testing::WithParamInterface<MediumCase> {};

TEST_P(MediumLinks, EndAtAMaterialsOwnMedium) {
    for (const bool isMix : {false, true}) {
        endExport();
        std::vector<BaseMaterial*> materials;
        for (const char* const name : {"A", "B", "C", "D"}) {
            materials.push_back(addMaterial(name, MAT_KIND_SPECULAR));
            data(materials.back()).SetBool(MAT_BLEND_ENABLED, isMix);
        }
        for (const char* link = GetParam().links; *link; link += 2) {
            data(materials[size_t(link[0] - 'A')])
                .SetLink(MAT_MEDIUM_SOURCE, materials[size_t(link[1] - 'A')]);
        }
        std::string used;
        std::string media;
        for (const char* letter = GetParam().exported; *letter; ++letter) {
            exportMaterial(materials[size_t(*letter - 'A')]);
            const auto medium = context().mediumMap.at(materials[size_t(*letter - 'A')]);
            used += medium->getName().toStdString().substr(3, 1);
        }
        for (const auto& node : scene().getChildren()) {
            if (node->getType() == Quenza::NODE_MEDIUM) {
                media += node->getName().toStdString().substr(3, 1);
            }
        }
        EXPECT_EQ(media, GetParam().media);
        EXPECT_EQ(used, GetParam().used);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Graphs, MediumLinks,
    ::testing::Values(MediumCase{"", "AB", "AB", "AB"}, MediumCase{"ABBC", "A", "C", "C"},
                      MediumCase{"ABBC", "ABC", "C", "CCC"}, MediumCase{"ABBC", "CBA", "C", "CCC"},
                      MediumCase{"ABCB", "AC", "B", "BB"},
                      // Circles.
                      MediumCase{"AA", "A", "A", "A"}, MediumCase{"ABBA", "AB", "A", "AA"},
                      MediumCase{"ABBA", "BA", "B", "BB"}, MediumCase{"ABBCCDDB", "ACB", "B", "BBB"},
                      MediumCase{"ABBCCC", "A", "C", "C"}));

} // namespace
