// SPDX-License-Identifier: MIT
#include "export/exporter_fixture.h"
#include "host/ids.h"
#include "host/material.h"
#include "scene/scene_node_material.h"
#include "scene/scene_node_sphere.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

namespace {

/// Which materials reach the models and spheres of a scene.
class MaterialSlots : public ExporterTest {
protected:
    void addMaterialTag(BaseObject* object, const char* material, const char* restriction = "") {
        addTexture(object, restriction)->SetMaterial(addMaterial(PLUGINID_MATERIAL, material));
    }

    BaseObject* addSphere(const char* name, BaseObject* parent) {
        BaseObject* const sphere = add(Osphere, name, parent);
        sphere->GetDataInstance()->SetBool(PRIM_SPHERE_PERFECT, true);
        return sphere;
    }

    std::string materialsOf(const char* name) const {
        std::string names;
        for (const auto& material : model(name)->materials) {
            names += (names.empty() ? "" : ", ") + material->getName().toStdString();
        }
        return names;
    }

    std::string sphereMaterials() const {
        std::string names;
        for (const auto* const sphere : nodes<Quenza::SceneNodeSphere>(Quenza::NODE_SPHERE)) {
            names += (names.empty() ? "" : ", ") +
                     scene().getChildByUID(sphere->material_uid)->getName().toStdString();
        }
        return names;
    }

    std::string sceneMaterials() const {
        std::string names;
        for (const auto* const node : nodes<Quenza::SceneNodeMaterial>(Quenza::NODE_MATERIAL)) {
            names += (names.empty() ? "" : ", ") + node->getName().toStdString();
        }
        return names;
    }
};

TEST_F(MaterialSlots, GetTheMaterialsOfTheirSelections) {
    PolygonObject* const strip = addStrip("Strip", 4);
    addSelection(strip, "first", {0});
    addSelection(strip, "second", {2});
    addMaterialTag(strip, "Unrestricted");
    addMaterialTag(strip, "Second", "second");
    addMaterialTag(strip, "First", "first");
    exportScene();
    EXPECT_EQ(materialsOf("Strip"), "First, Second, Unrestricted");
    EXPECT_EQ(sceneMaterials(), "nullMat, default, First, Second, Unrestricted");
}

TEST_F(MaterialSlots, WithoutAMaterialOfTheirOwnAreDefault) {
    PolygonObject* const strip = addStrip("Strip", 2);
    addSelection(strip, "first", {0});
    addMaterialTag(strip, "First", "first");
    addTexture(addQuad("Empty tag"));
    addQuad("No tag");
    exportScene();
    EXPECT_EQ(materialsOf("Strip"), "First, default");
    EXPECT_EQ(materialsOf("Empty tag"), "default");
    EXPECT_EQ(materialsOf("No tag"), "default");
}

TEST_F(MaterialSlots, ShareAMaterialThatStandsOnceInTheScene) {
    BaseMaterial* const shared = addMaterial(PLUGINID_MATERIAL, "Shared");
    for (const char* const name : {"A", "B"}) {
        addTexture(addQuad(name))->SetMaterial(shared);
    }
    addInstance("Instance", document()->GetFirstObject());
    exportScene();
    EXPECT_EQ(sceneMaterials(), "nullMat, default, Shared");
    EXPECT_EQ(modelNames(), "A B A");
    for (const Quenza::SceneNodeModel* const each : models()) {
        EXPECT_EQ(each->materials[0]->getName().toStdString(), "Shared");
    }
}

TEST_F(MaterialSlots, ShowTheBlendOfAMix) {
    BaseMaterial* const mixed = addMaterial(PLUGINID_MATERIAL, "Mixed");
    mixed->GetDataInstance()->SetBool(MAT_BLEND_ENABLED, true);
    mixed->GetDataInstance()->SetBool(MAT_USE_EMISSION_SCALE, true);
    addTexture(addQuad("Quad"))->SetMaterial(mixed);
    exportScene();
    EXPECT_EQ(sceneMaterials(), "nullMat, default, Mixed_blendA, Mixed");
    EXPECT_EQ(materialsOf("Quad"), "Mixed");
    ASSERT_EQ(model("Quad")->emission_scales.size(), 1u);
    EXPECT_EQ(model("Quad")->emission_scales[0]->material_uid, model("Quad")->materials[0]->getUID());
}

TEST_F(MaterialSlots, GiveSpheresTheMaterialThatHasNoRestriction) {
    BaseObject* const group = add(Onull, "Group");
    addMaterialTag(group, "Group's");
    addSphere("Bare", nullptr);
    BaseObject* const inheriting = addSphere("Inheriting", group);
    addMaterialTag(inheriting, "Restricted", "a selection");
    addMaterialTag(addSphere("Own", group), "Own");
    addTexture(addSphere("Empty", group));
    exportScene();
    EXPECT_EQ(sphereMaterials(), "Group's, Own, default, default");
}

TEST_F(MaterialSlots, OfOtherMaterialsGetWhatTheseAreConvertedTo) {
    BaseMaterial* const host = addMaterial(Mmaterial, "Plain");
    addTexture(addQuad("Quad"))->SetMaterial(host);
    addTexture(addQuad("Again"))->SetMaterial(host);
    exportScene();
    EXPECT_EQ(materialsOf("Quad"), "Plain");
    EXPECT_EQ(sceneMaterials(), "nullMat, default, Plain");
    EXPECT_EQ(document()->GetFirstMaterial(), host);
    EXPECT_EQ(host->GetNext(), nullptr);
}

} // namespace
