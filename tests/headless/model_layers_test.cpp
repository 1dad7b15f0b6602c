// SPDX-License-Identifier: MIT
#include "headless/runtime/described_parameter.h"
#include "host/atomarray.h"
#include "host/description.h"
#include "host/layer.h"
#include "model_fixture.h"

// Layers, selections, and descriptions made at run time.

namespace headless {

namespace {

class LayersTest : public ModelTest {
protected:
    LayerObject* addLayer(const char* name, LayerObject* parent = nullptr) const {
        LayerObject* const layer = LayerObject::Alloc();
        layer->SetName(name);
        layer->InsertUnder(parent ? parent : doc()->GetLayerObjectRoot());
        return layer;
    }
};

TEST_F(LayersTest, HangBelowARootThatNothingIsOn) {
    LayerObject* const root = doc()->GetLayerObjectRoot();
    EXPECT_EQ(root->GetDown(), nullptr);
    LayerObject* const first = addLayer("First");
    LayerObject* const second = addLayer("Second");
    LayerObject* const inner = addLayer("Inner", first);
    EXPECT_EQ(root->GetDown(), second);
    EXPECT_EQ(second->GetNext(), first);
    EXPECT_EQ(first->GetDown(), inner);
    EXPECT_EQ(inner->GetDocument(), doc());
    // Neither below itself, nor the root below another.
    first->InsertUnder(inner);
    root->InsertUnder(first);
    EXPECT_EQ(second->GetNext(), first);
    EXPECT_EQ(doc()->GetLayerObjectRoot(), root);

    BaseObject* const cube = addCube();
    EXPECT_EQ(cube->GetLayerObject(), nullptr);
    cube->SetLayerObject(inner);
    EXPECT_EQ(cube->GetLayerObject(), inner);
    fromHost(first)->setOwnFlags({true, false, true});
    EXPECT_FALSE(cube->GetLayerData(doc())->render);
    cube->SetLayerObject(root);
    EXPECT_EQ(cube->GetLayerObject(), nullptr);
}

TEST_F(LayersTest, TakeUndo) {
    doc()->StartUndo();
    LayerObject* const layer = addLayer("Old Materials");
    doc()->AddUndo(UNDOTYPE_NEW, layer);
    doc()->EndUndo();
    EXPECT_TRUE(doc()->DoUndo());
    EXPECT_EQ(doc()->GetLayerObjectRoot()->GetDown(), nullptr);
    LayerObject* const outer = addLayer("Outer");
    LayerObject* inner = addLayer("Inner", outer);
    doc()->StartUndo();
    doc()->AddUndo(UNDOTYPE_DELETE, inner);
    inner->Remove();
    delete fromHost(inner);
    doc()->EndUndo();
    EXPECT_TRUE(doc()->DoUndo());
    ASSERT_NE(outer->GetDown(), nullptr);
    EXPECT_EQ(outer->GetDown()->GetName(), String("Inner"));
}

TEST_F(LayersTest, SelectionsComeInTheOrderOfTheDocument) {
    BaseObject* const parent = addCube();
    BaseObject* const child = addCube(parent);
    BaseObject* const last = addCube();
    BaseTag* const tag = parent->MakeTag(Tphong);
    BaseMaterial* const material = BaseMaterial::Alloc(Mmaterial);
    doc()->InsertMaterial(material);
    doc()->InsertMaterial(BaseMaterial::Alloc(Mmaterial));
    const std::vector<BaseList2D*> chosen{tag, child, last, material};
    for (BaseList2D* const node : chosen) {
        fromHost(node)->info |= BIT_ACTIVE;
    }
    AtomArray selection;
    doc()->GetSelection(selection);
    ASSERT_EQ(selection.GetCount(), 4);
    for (int32_t i = 0; i < 4; ++i) {
        EXPECT_EQ(selection.GetIndex(i), chosen[static_cast<size_t>(i)]) << i;
    }
    AtomArray materials;
    doc()->GetActiveMaterials(materials);
    ASSERT_EQ(materials.GetCount(), 1);
    EXPECT_EQ(materials.GetIndex(0), material);
}

TEST_F(LayersTest, DocumentsTakeRenderSetupsAndPlaces) {
    ::RenderData* const setup = ::RenderData::Alloc();
    setup->GetDataInstance()->SetLong(RDATA_XRES, 123);
    doc()->InsertRenderData(setup);
    EXPECT_EQ(doc()->GetActiveRenderData(), setup);
    doc()->SetDocumentPath("/some/where");
    doc()->SetDocumentName("scene.json");
    EXPECT_EQ(doc()->GetDocumentPath(), Filename("/some/where"));
    EXPECT_EQ(doc()->GetDocumentName(), Filename("scene.json"));
    EXPECT_FALSE(document->changed);
    doc()->SetChanged();
    EXPECT_TRUE(document->changed);
}

TEST_F(LayersTest, DescriptionsGrowAtRunTime) {
    DescriptionInstance instance;
    auto* const description = reinterpret_cast<Description*>(&instance);
    BaseContainer properties;
    properties.SetString(DESC_NAME, "Layers");
    EXPECT_TRUE(description->SetParameter(DescID(10), DTYPE_GROUP, properties, DescID(0)));
    BaseContainer choices;
    choices.SetString(3, "Third");
    properties.SetString(DESC_NAME, "Layer");
    properties.SetContainer(DESC_CYCLE, choices);
    EXPECT_TRUE(description->SetParameter(DescID(11), DTYPE_LONG, properties, DescID(10)));
    EXPECT_FALSE(description->SetParameter(DescID(0), DTYPE_LONG, properties, DescID(10)));
    EXPECT_FALSE(description->SetParameter(DescID(12), 999, properties, DescID(10)));
    ASSERT_EQ(instance.items().size(), 2u);
    EXPECT_EQ(instance.items()[1].entry->kind, resources::EntryKind::integer);
    EXPECT_EQ(instance.items()[1].entry->label, "Layer");
    ASSERT_EQ(instance.items()[1].entry->cycle.size(), 1u);
    EXPECT_FALSE(instance.isHidden(instance.items()[1]));
    description->Hide(DescID(10), true);
    EXPECT_TRUE(instance.isHidden(instance.items()[1]));
    // A group of itself has no end.
    properties.SetBool(DESC_HIDE, false);
    EXPECT_TRUE(description->SetParameter(DescID(10), DTYPE_GROUP, properties, DescID(10)));
    ASSERT_EQ(instance.items().size(), 2u);
    EXPECT_FALSE(instance.isHidden(instance.items()[1]));
}

} // namespace

} // namespace headless
