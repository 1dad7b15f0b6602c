// SPDX-License-Identifier: MIT
#include "materials/quenza_material.h"

#include "host/bitmap.h"
#include "host/ids.h"
#include "materials/channels.h"
#include "materials/material_fixture.h"
#include "materials/material_kinds.h"
#include "materials/material_update.h"
#include "materials/new_material_command.h"

#include <set>

namespace {

class QuenzaMaterials : public MaterialTest {
protected:
    static QuenzaMaterial& behaviour(BaseMaterial* material) {
        return *dynamic_cast<QuenzaMaterial*>(material->GetNodeData());
    }
    static void link(BaseMaterial* from, int32_t id, BaseMaterial* to) { data(from).SetLink(id, to); }
};

/// So that the table of channels and those of the kinds lose nothing.
TEST_F(QuenzaMaterials, EveryFlagHasOneGroup) {
    std::set<int32_t> flags;
    std::set<int32_t> groups;
    for (const FlagGroup& entry : flagGroups()) {
        EXPECT_TRUE(flags.insert(entry.flag).second) << entry.flag;
        EXPECT_TRUE(groups.insert(entry.group).second) << entry.group;
    }
    EXPECT_EQ(flags, (std::set<int32_t>{6002, 6003, 6004, 6005, 6006, 6007, 6008, 6009, 6010, 6011, 6280,
                                        6292, 6303, 6307, 6310, 6311, 6313, 6315, 6316, 6317, 6318, 6319}));
    EXPECT_EQ(groups, (std::set<int32_t>{6013, 6015, 6016, 6017, 6018, 6019, 6020, 6021, 6022, 6023, 6279,
                                         6293, 6302, 6308, 6309, 6312, 6314, 6320, 6321, 6322, 6323, 6324}));
}

TEST_F(QuenzaMaterials, KindsForceTheirChannels) {
    // -1: untouched.
    const struct {
        int32_t kind;
        int blend;
        int albedo;
        int phong;
    } cases[] = {
        {MAT_KIND_DIFFUSE, -1, 1, -1},
        {MAT_KIND_ORENNAYAR, -1, 1, -1},
        {MAT_KIND_PHONG, -1, 1, -1},
        {MAT_KIND_DIFFUSE_TRANSMITTER, -1, 1, 0},
        {MAT_KIND_SPECULAR, -1, 0, -1},
        {MAT_KIND_BLEND, 1, 0, -1},
        {MAT_KIND_GLOSSY_TRANSPARENT, -1, 0, -1},
        {MAT_KIND_NULL, -1, 0, -1},
        {MAT_KIND_COATING, -1, 0, -1},
        {MAT_KIND_DOUBLE_SIDED_THIN, -1, 0, -1},
        {4711, -1, -1, -1},
    };
    for (const auto& test : cases) {
        for (const bool before : {false, true}) {
            BaseMaterial* const material = addMaterial("M");
            for (const FlagGroup& entry : flagGroups()) {
                data(material).SetBool(entry.flag, before);
            }
            data(material).SetLong(MAT_KIND, test.kind);
            EXPECT_TRUE(material->Message(MSG_DESCRIPTION_VALIDATE));
            for (const FlagGroup& entry : flagGroups()) {
                const int forced = entry.flag == MAT_BLEND_ENABLED    ? test.blend
                                   : entry.flag == MAT_ALBEDO_ENABLED ? test.albedo
                                   : entry.flag == MAT_PHONG_ENABLED  ? test.phong
                                                                      : -1;
                EXPECT_EQ(data(material).GetBool(entry.flag), forced == -1 ? before : forced == 1)
                    << test.kind << " " << entry.flag;
            }
        }
    }
    EXPECT_FALSE(updateMaterial(nullptr));
}

TEST_F(QuenzaMaterials, StartDiffuse) {
    const BaseMaterial* const material = addMaterial("M");
    const BaseContainer& values = *material->GetDataInstance();
    EXPECT_EQ(values.GetLong(MAT_KIND), MAT_KIND_DIFFUSE);
    EXPECT_EQ(values.GetVector(MAT_ALBEDO_COLOUR), Vector(1, 1, 1));
    EXPECT_EQ(values.GetReal(MAT_ALBEDO_BRIGHTNESS), 0.8f);
    // The numbered channels have no resource that a test of the pages could hold them against.
    const std::pair<int32_t, float> reals[] = {
        {10015, 0.0f},   {16015, 0.5f},   {10017, 2.2f},  {16019, 1.0f},  {11021, 1000.0f}, {12021, 0.3f},
        {13021, 1.0f},   {14021, 1.0f},   {15021, 0.3f},  {17021, 0.5f},  {11017, 1.0f},    {17019, 1.0f},
        {10010, 450.0f}, {16011, 200.0f}, {6072, 0.001f}, {6077, 0.001f}, {6055, 1.0f}};
    for (const auto& [id, value] : reals) {
        EXPECT_EQ(values.GetType(id), DA_REAL) << id;
        EXPECT_EQ(values.GetReal(id), value) << id;
    }
    EXPECT_EQ(values.GetLong(10001), MAT_SPECTRUM_UNIFORM);
    EXPECT_EQ(values.GetLong(16001), MAT_SPECTRUM_UNIFORM);
    for (const int32_t absent : {6241, 6242, 6328, 10021, 11001}) {
        EXPECT_EQ(values.GetType(absent), DA_NIL) << absent;
    }
}

TEST_F(QuenzaMaterials, EnableWhatHasAUse) {
    const struct {
        int32_t id;
        bool withoutShaders;
        bool withShaders;
    } cases[] = {
        {MAT_ALBEDO_COLOUR, true, false},
        {MAT_ALBEDO_BRIGHTNESS, true, false},
        {MAT_ALBEDO_B, false, true},
        {MAT_EXPONENT, true, false},
        {MAT_SIGMA, true, false},
        {MAT_BLEND_VALUE, true, false},
        {MAT_BLEND_STEP, false, true},
        {MAT_BUMP_TEXTURE_GAMMA, false, true},
        {MAT_EMISSION_COLOUR, true, true},
        {MAT_EMISSION_C, false, true},
        {MAT_NORMAL_MAP_A, false, true},
        {MAT_EXPONENT_SMOOTH, true, true},
        {10003, true, false},
        {10015, true, false},
        {10018, false, true},
        {12021, true, false},
        {12020, false, true},
        {MAT_MEDIUM_IOR, true, true},
        {MAT_KIND, true, true},
    };
    BaseMaterial* const plain = addMaterial("plain");
    BaseMaterial* const textured = addMaterial("textured");
    for (const Channel& entry : channels()) {
        addShader(textured, entry.shader, Xbitmap);
    }
    for (const auto& [id, withoutShaders, withShaders] : cases) {
        EXPECT_EQ(behaviour(plain).GetDEnabling(plain, id), withoutShaders) << id;
        EXPECT_EQ(behaviour(textured).GetDEnabling(textured, id), withShaders) << id;
    }
    data(plain).SetLong(MAT_KIND, MAT_KIND_DIFFUSE_TRANSMITTER);
    EXPECT_FALSE(behaviour(plain).GetDEnabling(plain, MAT_MEDIUM_IOR));
    EXPECT_FALSE(behaviour(plain).GetDEnabling(plain, MAT_MEDIUM_CAUCHY_B));
}

TEST_F(QuenzaMaterials, ReferToMaterialsByTheLinksOfTheirKind) {
    const struct {
        int32_t kind;
        int32_t link;
        int32_t flag;
        bool isOn;
        bool refers;
    } cases[] = {
        {MAT_KIND_BLEND, MAT_BLEND_MATERIAL_A, MAT_BLEND_ENABLED, false, true},
        {MAT_KIND_BLEND, MAT_BLEND_MATERIAL_B, 0, false, true},
        {MAT_KIND_DIFFUSE, MAT_BLEND_MATERIAL_A, MAT_BLEND_ENABLED, true, true},
        {MAT_KIND_NULL, MAT_BLEND_MATERIAL_A, MAT_BLEND_ENABLED, true, true},
        {MAT_KIND_DIFFUSE, MAT_BLEND_MATERIAL_A, MAT_BLEND_ENABLED, false, false},
        {MAT_KIND_DIFFUSE, MAT_BLEND_MATERIAL_B, MAT_BLEND_ENABLED, true, false},
        {MAT_KIND_COATING, MAT_COATING_SUBSTRATE, 0, false, true},
        {MAT_KIND_DIFFUSE, MAT_COATING_SUBSTRATE, 0, false, false},
        {MAT_KIND_DOUBLE_SIDED_THIN, MAT_THIN_FRONT, 0, false, true},
        {MAT_KIND_DOUBLE_SIDED_THIN, MAT_THIN_BACK, 0, false, true},
        {MAT_KIND_DOUBLE_SIDED_THIN, MAT_COATING_SUBSTRATE, 0, false, false},
        {MAT_KIND_SPECULAR, MAT_MEDIUM_SOURCE, MAT_MEDIUM_ENABLED, false, true},
        {MAT_KIND_GLOSSY_TRANSPARENT, MAT_MEDIUM_SOURCE, MAT_MEDIUM_ENABLED, false, true},
        {MAT_KIND_DIFFUSE_TRANSMITTER, MAT_MEDIUM_SOURCE, MAT_MEDIUM_ENABLED, true, true},
        {MAT_KIND_DIFFUSE_TRANSMITTER, MAT_MEDIUM_SOURCE, MAT_MEDIUM_ENABLED, false, false},
        {MAT_KIND_DIFFUSE_TRANSMITTER, MAT_MEDIUM_SOURCE, 0, false, true}, // As its export.
        {4711, MAT_BLEND_MATERIAL_A, MAT_BLEND_ENABLED, true, true},
        {4711, MAT_BLEND_MATERIAL_A, MAT_BLEND_ENABLED, false, false},
        {MAT_KIND_PHONG, MAT_MEDIUM_SOURCE, MAT_MEDIUM_ENABLED, true, false},
    };
    BaseMaterial* const target = addMaterial("target");
    for (const auto& test : cases) {
        BaseMaterial* const material = addMaterial("M", test.kind);
        link(material, test.link, target);
        if (test.flag != 0) {
            data(material).SetBool(test.flag, test.isOn);
        }
        EXPECT_EQ(materialReferences(material, target), test.refers) << test.kind << " " << test.link;
        EXPECT_FALSE(materialReferences(target, material));
    }
}

/// A change of a material makes the pictures of all that show it out of date, whatever shows what.
TEST_F(QuenzaMaterials, TellThoseThatShowThem) {
    BaseMaterial* const a = addMaterial("a", MAT_KIND_BLEND);
    BaseMaterial* const b = addMaterial("b", MAT_KIND_COATING);
    BaseMaterial* const c = addMaterial("c");
    BaseMaterial* const d = addMaterial("d");
    BaseMaterial* const host = addOtherMaterial("host", Mmaterial);
    link(a, MAT_BLEND_MATERIAL_A, b);
    link(a, MAT_BLEND_MATERIAL_B, host);
    link(b, MAT_COATING_SUBSTRATE, c);
    const auto counts = [&] {
        return std::vector<int32_t>{behaviour(a).invalidations(), behaviour(b).invalidations(),
                                    behaviour(c).invalidations(), behaviour(d).invalidations()};
    };
    c->Message(MSG_DESCRIPTION_POSTSETPARAMETER);
    EXPECT_EQ(counts(), (std::vector<int32_t>{1, 1, 0, 0}));
    EXPECT_TRUE(materialReferences(a, c));
    EXPECT_FALSE(materialReferences(c, a));

    link(c, MAT_BLEND_MATERIAL_A, a);
    data(c).SetBool(MAT_BLEND_ENABLED, true);
    b->Message(MSG_DESCRIPTION_POSTSETPARAMETER);
    EXPECT_EQ(counts(), (std::vector<int32_t>{2, 2, 1, 0})) << "in a cycle each shows each, and itself";
    EXPECT_TRUE(materialReferences(c, c));
    EXPECT_FALSE(materialReferences(d, a));
    d->Message(MSG_UPDATE);
    EXPECT_EQ(counts(), (std::vector<int32_t>{2, 2, 1, 1}));
}

TEST_F(QuenzaMaterials, ReferThroughLongChains) {
    BaseMaterial* const first = addMaterial("0", MAT_KIND_COATING);
    BaseMaterial* last = first;
    for (int i = 1; i < 2000; ++i) {
        BaseMaterial* const next = BaseMaterial::Alloc(PLUGINID_MATERIAL);
        data(next).SetLong(MAT_KIND, MAT_KIND_COATING);
        document()->InsertMaterial(next);
        link(last, MAT_COATING_SUBSTRATE, next);
        last = next;
    }
    EXPECT_TRUE(materialReferences(first, last));
    EXPECT_FALSE(materialReferences(last, first));
    last->Message(MSG_DESCRIPTION_POSTSETPARAMETER);
    EXPECT_EQ(behaviour(first).invalidations(), 1);
}

TEST_F(QuenzaMaterials, KeepWhatTheyUse) {
    BaseMaterial* const used[] = {addMaterial("6259"), addMaterial("6269"), addMaterial("6306"),
                                  addMaterial("6325"), addMaterial("6326"), addMaterial("6330")};
    constexpr int32_t LINKS[] = {MAT_BLEND_MATERIAL_A, MAT_BLEND_MATERIAL_B, MAT_COATING_SUBSTRATE,
                                 MAT_THIN_FRONT,       MAT_THIN_BACK,        MAT_MEDIUM_SOURCE};
    const struct {
        int32_t kind;
        bool isMixed;
        const char* names;
    } cases[] = {
        {MAT_KIND_BLEND, true, "6259 6269 "},
        {MAT_KIND_COATING, false, "6306 "},
        {MAT_KIND_COATING, true, "6259 6306 "},
        {MAT_KIND_DOUBLE_SIDED_THIN, false, "6306 6325 6326 "},
        {MAT_KIND_DOUBLE_SIDED_THIN, true, "6259 6306 6325 6326 "},
        {MAT_KIND_DIFFUSE, true, "6259 "},
        {MAT_KIND_SPECULAR, false, ""},
        {4711, true, "6259 "},
    };
    for (const auto& test : cases) {
        BaseMaterial* const material = addMaterial("M", test.kind);
        data(material).SetBool(MAT_BLEND_ENABLED, test.isMixed);
        for (size_t i = 0; i < std::size(LINKS); ++i) {
            link(material, LINKS[i], used[i]);
            used[i]->DelBit(BIT_MATERIALUSED);
        }
        EXPECT_TRUE(material->Message(MSG_RENDER_PREPARE));
        std::string names;
        for (const BaseMaterial* const target : used) {
            names += target->GetBit(BIT_MATERIALUSED) ? target->GetName().GetUtf8() + " " : "";
        }
        EXPECT_EQ(names, test.names) << test.kind;
    }
}

TEST_F(QuenzaMaterials, FollowMaterialsThatAreExchanged) {
    BaseMaterial* const old = addMaterial("old");
    BaseMaterial* const other = addMaterial("other");
    BaseMaterial* const fresh = addMaterial("fresh");
    BaseMaterial* const material = addMaterial("M");
    for (const int32_t id : materialLinks()) {
        link(material, id, id == MAT_THIN_BACK ? other : old);
    }
    MaterialExchange exchange{old, fresh};
    EXPECT_TRUE(material->Message(MSG_RENDER_PREPARE, &exchange));
    for (const int32_t id : {6259, 6269, 6306, 6325, 6326, 6330}) {
        EXPECT_EQ(data(material).GetLink(id, nullptr), id == MAT_THIN_BACK ? other : fresh) << id;
    }
    EXPECT_FALSE(fresh->GetBit(BIT_MATERIALUSED));
}

TEST_F(QuenzaMaterials, ComeByCommandAndGoByUndo) {
    EXPECT_FALSE(NewMaterialCommand().Execute(nullptr));
    ASSERT_TRUE(NewMaterialCommand().Execute(document()));
    BaseMaterial* const made = document()->GetFirstMaterial();
    ASSERT_NE(made, nullptr);
    EXPECT_TRUE(made->IsInstanceOf(PLUGINID_MATERIAL));
    EXPECT_EQ(behaviour(made).invalidations(), 1);
    EXPECT_TRUE(document()->DoUndo());
    EXPECT_EQ(document()->GetFirstMaterial(), nullptr);
}

} // namespace
