// SPDX-License-Identifier: MIT
#include "materials/quenza_material.h"

#include "host/bitmap.h"
#include "host/ids.h"
#include "materials/material_fixture.h"
#include "materials/material_kinds.h"
#include "materials/material_update.h"

namespace {

class QuenzaMaterials : public MaterialTest {
protected:
    static QuenzaMaterial& behaviour(BaseMaterial* material) {
        return *dynamic_cast<QuenzaMaterial*>(material->GetNodeData());
    }
    static void link(BaseMaterial* from, int32_t id, BaseMaterial* to) { data(from).SetLink(id, to); }
};

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

} // namespace
