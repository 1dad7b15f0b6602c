// SPDX-License-Identifier: MIT
#include "scene/material_samples.h"
#include "scene/scene_node_root.h"
#include "scene/scene_node_scatter.h"
#include "scene/xml_text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace Quenza {
namespace {

SceneVisitor makeVisitor(SceneVisitor::Mode mode) {
    SceneVisitor visitor;
    visitor.mode = mode;
    return visitor;
}

std::string bindError(const Ref<SceneNode>& node) {
    SceneVisitor visitor = makeVisitor(SceneVisitor::BIND);
    return thrownText([&] { node->doVisit(visitor); });
}

Ref<Material> blendOf(u32 a, u32 b) {
    Ref<BlendMaterial> blend = new BlendMaterial;
    blend->a_mat_uid = SceneNodeUID(a);
    blend->b_mat_uid = SceneNodeUID(b);
    return blend;
}

Ref<Material> coatingOn(u32 substrate) {
    Ref<CoatingMaterial> coating = new CoatingMaterial;
    coating->substrate_material_uid = SceneNodeUID(substrate);
    return coating;
}

Ref<Material> thinOf(u32 front, u32 back) {
    Ref<DoubleSidedThinMaterial> thin = new DoubleSidedThinMaterial;
    thin->front_material_uid = SceneNodeUID(front);
    thin->back_material_uid = SceneNodeUID(back);
    return thin;
}

Ref<Material> sumOf(u32 a, u32 b) {
    Ref<SumMaterial> sum = new SumMaterial;
    sum->materials.resize(2);
    sum->mat_uids = {SceneNodeUID(a), SceneNodeUID(b)};
    sum->weights.resize(2, Ref<WavelengthIndependentParam>(new ConstantWavelengthIndependentParam(1)));
    return sum;
}

template <class M>
Ref<Material> filledWith(u32 medium) {
    Ref<M> material = new M;
    material->internal_medium_uid = SceneNodeUID(medium);
    return material;
}

/// A scene of the materials 10 (moves its surface) and 11 and the medium 20.
class MaterialBinding : public testing::Test {
protected:
    void SetUp() override {
        Ref<DiffuseMaterial> relief = new DiffuseMaterial;
        relief->displacement = height(0);
        root->addChild(ten = makeNode(relief, 10, "ten"));
        root->addChild(eleven = makeNode(new NullMaterial, 11, "eleven"));
        medium = new SceneNodeMedium(new Dermis);
        medium->setUID(SceneNodeUID(20));
        root->addChild(medium);
    }
    Ref<SceneNodeMaterial> add(const Ref<Material>& material, u32 uid = 30) {
        Ref<SceneNodeMaterial> node = makeNode(material, uid, "node");
        root->addChild(node);
        return node;
    }

    Ref<SceneNodeRoot> root = new SceneNodeRoot;
    Ref<SceneNodeMaterial> ten, eleven;
    Ref<SceneNodeMedium> medium;
};

std::vector<u32> values(const Vector<SceneNodeUID>& uids) {
    std::vector<u32> result;
    for (const SceneNodeUID uid : uids)
        result.push_back(uid.value());
    return result;
}

TEST_F(MaterialBinding, ResolvesReferencesOfAllClasses) {
    struct Case {
        Ref<Material> material;
        std::vector<u32> uids;
        bool uses_eleven;
        bool displacement;
    };
    const Case cases[] = {
        {blendOf(10, 11), {10, 11}, true, true},
        {blendOf(11, 11), {11, 11}, true, false},
        {coatingOn(10), {10}, false, true},
        {thinOf(11, 10), {11, 10}, true, true},
        {sumOf(11, 10), {11, 10}, true, true},
        {filledWith<SpecularMaterial>(20), {20}, false, false},
        {filledWith<GlossyTransparent>(20), {20}, false, false},
        {filledWith<DiffuseTransmitter>(20), {20}, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.material->getTypeName().toStdString());
        const Ref<SceneNodeMaterial> node = add(c.material);
        EXPECT_EQ(values(node->getReferencedUIDs()), c.uids);
        ASSERT_EQ(bindError(node), "no exception");

        // Bound references follow their node: the stored UIDs no longer matter.
        for (SceneNode* target : {ten.getPointer(), eleven.getPointer()})
            target->setUID(SceneNodeUID(target->getUID().value() + 100));
        std::vector<u32> moved = c.uids;
        for (u32& uid : moved)
            uid += uid < 20 ? 100 : 0;
        EXPECT_EQ(values(node->getReferencedUIDs()), moved);
        for (SceneNode* target : {ten.getPointer(), eleven.getPointer()})
            target->setUID(SceneNodeUID(target->getUID().value() - 100));

        EXPECT_EQ(node->usesNode(eleven.getPointer()), c.uses_eleven);
        EXPECT_FALSE(node->usesNode(node.getPointer()));
        EXPECT_EQ(c.material->hasDisplacement(), c.displacement);
        root->removeChild(node);
    }
}

TEST_F(MaterialBinding, RejectsMissingAndWrongTargets) {
    Ref<SumMaterial> sum = new SumMaterial;
    sum->materials = {ten, {}};
    struct Case {
        Ref<Material> material;
        const char* text;
    };
    const Case cases[] = {
        {blendOf(10, 99), "Failed to find node with UID 99"},
        {coatingOn(20), "Node with UID 20 was not a material node."},
        {filledWith<SpecularMaterial>(99), "Failed to find node with UID 99"},
        {filledWith<SpecularMaterial>(10), "Node with UID 10 was not a medium node."},
        {Ref<Material>(sum), "Material was NULL and no mat_uid with same index."},
        {sumOf(10, SceneNodeUID::INVALID_VALUE), "Material was NULL and no mat_uid with same index."},
    };
    for (const Case& c : cases)
        EXPECT_EQ(bindError(add(c.material)), c.text);
}

TEST_F(MaterialBinding, CyclesEndWithTheAnswerOfTheRestOfTheGraph) {
    Ref<BlendMaterial> a = new BlendMaterial, b = new BlendMaterial;
    a->a_mat = makeNode(b, 31, "b");
    a->b_mat = eleven;
    b->a_mat = makeNode(a, 30, "a");
    b->b_mat = b->a_mat;
    EXPECT_TRUE(a->usesNode(eleven.getPointer()));
    EXPECT_TRUE(b->usesNode(eleven.getPointer()));
    EXPECT_TRUE(a->usesNode(b->a_mat.getPointer())) << "through b";
    EXPECT_FALSE(a->usesNode(ten.getPointer()));
    EXPECT_FALSE(a->hasDisplacement());
    b->b_mat = ten;
    EXPECT_TRUE(a->hasDisplacement());
    b->a_mat = nullptr;
}

TEST_F(MaterialBinding, LongChainsExhaustNeitherTimeNorStack) {
    Ref<SceneNodeMaterial> last = eleven;
    for (u32 i = 0; i < 200000; ++i) {
        Ref<BlendMaterial> blend = new BlendMaterial;
        blend->a_mat = last;
        blend->b_mat = last;
        last = new SceneNodeMaterial(blend);
    }
    EXPECT_TRUE(last->usesNode(eleven.getPointer()));
    EXPECT_FALSE(last->usesNode(ten.getPointer()));
    last = nullptr;
    EXPECT_EQ(eleven->getRefCount(), 2u);
}

TEST_F(MaterialBinding, BindsScatterNodes) {
    Ref<SceneNodeScatter> scatter = new SceneNodeScatter;
    scatter->setUID(SceneNodeUID(40));
    root->addChild(scatter);
    const Ref<SceneNodeMaterial> node = add(new NullMaterial);
    node->scatter_uids.push_back(SceneNodeUID(40));
    ASSERT_EQ(bindError(node), "no exception");
    ASSERT_EQ(bindError(node), "no exception");
    EXPECT_EQ(scatter->material_uid.value(), 30u);
    EXPECT_EQ(xmlText(*node), "<material>\n\t<uid>30</uid>\n\t<name>node</name>\n\t<null_material>\n"
                              "\t</null_material>\n\t<scatter_uids>\n\t\t<uid>40</uid>\n\t</scatter_uids>\n"
                              "</material>\n");
    EXPECT_EQ(values(node->getReferencedUIDs()), (std::vector<u32>{40}));

    node->scatter_uids[0] = SceneNodeUID(99);
    EXPECT_EQ(bindError(node),
              "While processing node 'node', UID 30:  Failed to find scatter node for UID 99");
    node->scatter_uids[0] = SceneNodeUID(10);
    EXPECT_EQ(bindError(node), "Referenced node did not have type SceneNodeScatter");
}

} // namespace
} // namespace Quenza
