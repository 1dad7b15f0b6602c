// SPDX-License-Identifier: MIT
#include "export/exporter_fixture.h"
#include "headless/model/document.h"
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

    /// The names of some nodes with commas between.
    template <class Nodes, class NodeOf>
    static std::string join(const Nodes& nodes, const NodeOf& nodeOf) {
        std::string names;
        for (const auto& each : nodes) {
            names += (names.empty() ? "" : ", ") + nodeOf(each)->getName().toStdString();
        }
        return names;
    }
    std::string materialsOf(const char* name) const {
        return join(model(name)->materials, [](const auto& material) { return material; });
    }
    std::string sphereMaterials() const {
        return join(nodes<Quenza::SceneNodeSphere>(Quenza::NODE_SPHERE),
                    [this](const auto* sphere) { return scene().getChildByUID(sphere->material_uid); });
    }
    std::string sceneMaterials() const {
        return join(nodes<Quenza::SceneNode>(Quenza::NODE_MATERIAL), [](const auto* node) { return node; });
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

TEST_F(MaterialSlots, ShareAMaterialThatStandsOnceInTheSceneOrIsConvertedOnce) {
    for (const int32_t type : {int32_t(PLUGINID_MATERIAL), int32_t(Mmaterial)}) {
        BaseMaterial* const shared = addMaterial(type, "Shared");
        for (const char* const name : {"A", "B"}) {
            addTexture(addQuad(name))->SetMaterial(shared);
        }
        addInstance("Instance", document()->GetFirstObject());
        exportScene();
        EXPECT_EQ(sceneMaterials(), "nullMat, default, Shared") << type;
        EXPECT_EQ(modelNames(), "A B A");
        for (const Quenza::SceneNodeModel* const each : models()) {
            EXPECT_EQ(each->materials[0]->getName().toStdString(), "Shared");
        }
        EXPECT_EQ(document()->GetFirstMaterial(), shared);
        EXPECT_EQ(shared->GetNext(), nullptr);
        host().open(std::make_unique<headless::Document>());
    }
}

} // namespace
