// SPDX-License-Identifier: MIT
#include "headless/model/warnings.h"
#include "headless/model_fixture.h"
#include "host/plugin_data.h"

namespace headless {

namespace {

using BuildCache = ModelTest;

bool isControl(const BaseObject* object) {
    return object->GetBit(BIT_CONTROLOBJECT);
}

TEST_F(BuildCache, arraysCopiesOfTheirInput) {
    BaseObject* const array = add(Oarray);
    array->GetDataInstance()->SetLong(ARRAY_COPIES, 4);
    array->GetDataInstance()->SetReal(ARRAY_RADIUS, 100.0f);
    BaseObject* const cube = addCube(array);
    BaseObject* const child = addCube(cube);
    BaseObject* const second = addCube(array);
    build();

    for (const BaseObject* const input : {cube, child}) {
        EXPECT_TRUE(isControl(input));
        EXPECT_TRUE(isControl(input->GetCache()));
    }
    EXPECT_FALSE(isControl(array));
    EXPECT_FALSE(isControl(second));
    EXPECT_FALSE(isControl(second->GetCache()));

    BaseObject* const cache = array->GetCache();
    EXPECT_TRUE(isNear(cache->GetDown()->GetMg().off, {100, 0, 0}));
    EXPECT_TRUE(isNear(cache->GetDown()->GetNext()->GetMg().off, {0, 0, 100}));
    int copies = 0;
    for (BaseObject* copy = cache->GetDown(); copy; copy = copy->GetNext()) {
        ++copies;
        ASSERT_NE(copy->GetCache(), nullptr);
        EXPECT_FALSE(isControl(copy));
        EXPECT_FALSE(isControl(copy->GetCache()));
        EXPECT_EQ(copy->GetCache()->GetCacheParent(), copy);
        EXPECT_EQ(copy->GetCache()->GetTopOrigin(), array);
        EXPECT_EQ(copy->GetDown()->GetCache()->GetTopOrigin(), array);
        EXPECT_EQ(copy->GetTopOrigin(), array);
        EXPECT_EQ(copy->GetCacheParent(), nullptr);
    }
    EXPECT_EQ(copies, 4);

    // Without its generator the cube is an object like others.
    fromHost(array)->enabled = false;
    build();
    EXPECT_FALSE(isControl(cube));
    EXPECT_FALSE(isControl(child->GetCache()));
}

TEST_F(BuildCache, endsCyclesOfInstances) {
    BaseObject* const a = add(Onull);
    BaseObject* const b = add(Onull);
    BaseObject* const toB = addInstance(b, false, a);
    addCube(a);
    addInstance(a, false, b);
    addCube(b);
    BaseObject* const toParent = addInstance(a, false, a);
    BaseObject* const outside = addInstance(a, false);
    build();

    EXPECT_EQ(toParent->GetCache(), nullptr);
    ASSERT_NE(toB->GetCache(), nullptr);
    EXPECT_EQ(toB->GetCache()->GetDown()->GetCache(), nullptr) << "it would show what it is part of";
    EXPECT_NE(outside->GetCache(), nullptr);
}

/// Notes what the user is told.
class BuildLimits : public ModelTest {
protected:
    BuildLimits() {
        setWarningSink([this](const std::string& text) { warnings.push_back(text); });
    }
    ~BuildLimits() override { setWarningSink({}); }

    std::vector<std::string> warnings;
};

TEST_F(BuildLimits, endTheNestingOfGenerators) {
    // A row of instances, each of which shows the one before.
    BaseObject* last = addCube();
    for (int i = 0; i < 2 * maxCacheDepth; ++i) {
        last = addInstance(last, false);
    }
    build();
    EXPECT_NE(last->GetCache(), nullptr);
    EXPECT_EQ(warnings, std::vector<std::string>{"\"Instance\" is nested 64 generators deep: it is left out, "
                                                 "and so may be others."});
}

TEST_F(BuildLimits, boundTheNumberOfGeneratedObjects) {
    BaseObject* const array = add(Oarray);
    array->GetDataInstance()->SetLong(ARRAY_COPIES, 2000000000);
    addCube(array);
    build();
    EXPECT_EQ(array->GetCache(), nullptr);
    EXPECT_EQ(warnings,
              std::vector<std::string>{"\"Array\" would bring the document to more than 2000000 generated "
                                       "objects: it is left out, and so may be others."});
    array->GetDataInstance()->SetLong(ARRAY_COPIES, 2);
    build();
    EXPECT_NE(array->GetCache(), nullptr);
    EXPECT_EQ(warnings.size(), 1u);
}

/// Shows a clone of what parameter 1 links to.
class LinkShower : public ObjectData {
public:
    static constexpr int32_t typeId = 1000001;
    static constexpr int32_t link = 1;
    static NodeData* allocate() { return new LinkShower; }

    BaseObject* GetVirtualObjects(BaseObject* object, HierarchyHelp* help) override {
        BaseList2D* const target = object->GetDataInstance()->GetLink(link, help->document);
        return target ? static_cast<BaseObject*>(target->GetClone()) : nullptr;
    }
    void GetDimension(BaseObject*, Vector* centre, Vector* radius) override {
        *centre = {1, 2, 3};
        *radius = {4, 5, 6};
    }
};

class BuildPlugin : public ModelTest {
protected:
    BuildPlugin() {
        NodeTypeInfo type;
        type.id = LinkShower::typeId;
        type.name = "Link Shower";
        type.allocator = LinkShower::allocate;
        NodeTypes::instance().add(type);
    }
    ~BuildPlugin() override {
        document.reset();
        NodeTypes::instance().removePluginTypes();
    }
};

TEST_F(BuildPlugin, givesItsVirtualObjects) {
    BaseObject* const array = add(Oarray);
    addCube(array);
    BaseObject* const shower = add(LinkShower::typeId);
    EXPECT_NE(shower->GetNodeData(), nullptr);
    build();
    EXPECT_EQ(shower->GetCache(), nullptr);
    EXPECT_EQ(shower->GetMp(), Vector(1, 2, 3));

    shower->GetDataInstance()->SetLink(LinkShower::link, array);
    build();
    BaseObject* const cache = shower->GetCache();
    ASSERT_NE(cache, nullptr);
    EXPECT_EQ(cache->GetType(), Oarray);
    EXPECT_EQ(cache->GetCacheParent(), shower);
    EXPECT_EQ(cache->GetCache()->GetDown()->GetCache()->GetTopOrigin(), shower);
    EXPECT_EQ(cache->GetDocument(), doc());

    doc()->InsertObject(shower, array);
    build();
    EXPECT_EQ(shower->GetCache(), nullptr) << "it would be inside of itself";
}

} // namespace

} // namespace headless
