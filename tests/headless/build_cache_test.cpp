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

TEST_F(BuildCache, makesPolygonsOfAPrimitive) {
    BaseObject* const cube = addCube(nullptr, {2, 4, 6});
    cube->SetName("Box");
    move(cube, {10, 0, 0});
    cube->MakeTag(Tphong)->GetDataInstance()->SetReal(PHONGTAG_PHONG_ANGLE, 0.5f);
    cube->MakeTag(Ttexture);
    EXPECT_EQ(cube->GetCache(), nullptr);
    build();

    ::PolygonObject* const cache = polygons(cube->GetCache());
    ASSERT_NE(cache, nullptr);
    EXPECT_EQ(cache->GetPointCount(), 8);
    EXPECT_EQ(cache->GetPolygonCount(), 6);
    EXPECT_EQ(cache->GetName().GetUtf8(), "Box");
    EXPECT_EQ(cache->GetMl(), Matrix());
    EXPECT_EQ(cache->GetMg().off, Vector(10, 0, 0));
    EXPECT_EQ(cache->GetCacheParent(), cube);
    EXPECT_EQ(cache->GetTopOrigin(), cube);
    EXPECT_EQ(cache->GetDocument(), doc());
    EXPECT_EQ(cache->GetUp(), nullptr);
    EXPECT_EQ(static_cast<::UVWTag*>(cache->GetTag(Tuvw))->GetDataCount(), 6);
    EXPECT_EQ(cache->GetTag(Tphong)->GetDataInstance()->GetReal(PHONGTAG_PHONG_ANGLE), 0.5f);
    EXPECT_EQ(cache->GetTag(Ttexture), nullptr);
    EXPECT_EQ(cube->GetTopOrigin(), nullptr);
    EXPECT_EQ(cube->GetCacheParent(), nullptr);
    EXPECT_EQ(cube->GetRad(), Vector(1, 2, 3));
}

/// Numbers that the plug-in sets on the shapes of area lights, with the box that must come of it.
TEST_F(BuildCache, readsTheNumbersOfPrimitives) {
    struct Shape {
        int32_t type;
        std::vector<std::pair<int32_t, GeData>> parameters;
        Vector radius;
    };
    const Shape shapes[] = {
        {Odisc, {{1161, GeData(3.0)}, {1162, GeData(1)}, {1163, GeData(50)}, {1300, GeData(4)}}, {3, 3, 0}},
        {Oplane, {{1230, GeData(2.0)}, {1231, GeData(8.0)}, {1232, GeData(1)}, {1300, GeData(4)}}, {1, 4, 0}},
        {Osphere, {{1110, GeData(5.0)}, {1111, GeData(48)}}, {5, 5, 5}},
        {Osphere, {{1110, GeData(5.0)}, {1111, GeData(48)}, {1112, GeData(5)}}, {5, 2.5f, 5}},
        {Ocylinder,
         {{5000, GeData(2.0)}, {5005, GeData(10.0)}, {5008, GeData(48)}, {1300, GeData(4)}},
         {2, 2, 5}},
        {Ocube, {{1100, GeData(Vector(2, 4, 6))}, {1300, GeData(4)}}, {1, 2, 3}},
    };
    for (const Shape& shape : shapes) {
        BaseObject* object = add(shape.type);
        for (const auto& [id, value] : shape.parameters) {
            EXPECT_TRUE(object->SetParameter(id, value));
        }
        build();
        ASSERT_NE(polygons(object->GetCache()), nullptr) << shape.type;
        EXPECT_TRUE(isNear(object->GetRad(), shape.radius, 0.02f)) << shape.type;
        BaseObject::Free(object);
    }
}

TEST_F(BuildCache, leavesSwitchedOffGeneratorsWithout) {
    BaseObject* const cube = addCube();
    build();
    EXPECT_NE(cube->GetCache(), nullptr);
    fromHost(cube)->enabled = false;
    build();
    EXPECT_EQ(cube->GetCache(), nullptr);
    EXPECT_FALSE(cube->GetDeformMode());
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

TEST_F(BuildCache, nestsGeneratorsInGenerators) {
    BaseObject* const outer = add(Oarray);
    outer->GetDataInstance()->SetLong(ARRAY_COPIES, 2);
    BaseObject* const inner = add(Oarray, outer);
    inner->GetDataInstance()->SetLong(ARRAY_COPIES, 3);
    addCube(inner);
    build();

    BaseObject* const copyOfInner = outer->GetCache()->GetDown();
    ASSERT_EQ(copyOfInner->GetType(), Oarray);
    EXPECT_TRUE(isControl(copyOfInner->GetDown())) << "it's input inside the cache, too";
    BaseObject* const cube = copyOfInner->GetCache()->GetDown();
    EXPECT_EQ(cube->GetCache()->GetTopOrigin(), outer);
    EXPECT_FALSE(isControl(cube->GetCache()));
}

TEST_F(BuildCache, showsLinkedObjectsInInstances) {
    BaseObject* const group = add(Onull);
    move(group, {0, 50, 0});
    BaseObject* const cube = addCube(group);
    move(cube, {1, 2, 3});
    BaseObject* const instance = addInstance(group, false);
    move(instance, {7, 0, 0});
    BaseObject* const renderInstance = addInstance(group, true);
    build();

    EXPECT_EQ(renderInstance->GetCache(), nullptr);
    BaseObject* const cache = instance->GetCache();
    ASSERT_NE(cache, nullptr);
    EXPECT_EQ(cache->GetType(), Onull);
    EXPECT_EQ(cache->GetMg().off, Vector(7, 0, 0));
    EXPECT_EQ(cache->GetDown()->GetMg().off, Vector(8, 2, 3));
    EXPECT_EQ(cache->GetDown()->GetCache()->GetTopOrigin(), instance);

    BaseObject* freed = group;
    BaseObject::Free(freed);
    build();
    EXPECT_EQ(instance->GetCache(), nullptr);
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

TEST_F(BuildCache, mirrorsInSymmetries) {
    BaseObject* const symmetry = add(Osymmetry);
    symmetry->SetName("Both");
    BaseObject* const group = add(Onull, symmetry);
    move(group, {10, 0, 0});
    ::PolygonObject* const quad = addQuad(group);
    quad->SetName("Half");
    auto* const selection = static_cast<::SelectionTag*>(quad->MakeTag(Tpolygonselection));
    selection->GetBaseSelect()->Select(0);
    auto* const uvw = ::UVWTag::Alloc(1);
    uvw->Set(0, {{0, 1, 0}, {0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    quad->InsertTag(uvw);
    build();

    EXPECT_TRUE(isControl(quad));
    ::PolygonObject* const cache = polygons(symmetry->GetCache());
    ASSERT_NE(cache, nullptr);
    EXPECT_FALSE(isControl(cache));
    EXPECT_EQ(cache->GetName().GetUtf8(), "Half");
    EXPECT_EQ(cache->GetTopOrigin(), symmetry);
    ASSERT_EQ(cache->GetPolygonCount(), 2);
    EXPECT_TRUE(isNear(cache->GetMp(), {0, 0.5f, 0}));
    EXPECT_TRUE(isNear(cache->GetRad(), {11, 0.5f, 0}));
    EXPECT_EQ(static_cast<::SelectionTag*>(cache->GetTag(Tpolygonselection))->GetBaseSelect()->GetCount(), 2);
    EXPECT_EQ(static_cast<::UVWTag*>(cache->GetTag(Tuvw))->GetDataCount(), 2);
    // Both faces look the same way.
    for (int i = 0; i < 2; ++i) {
        const CPolygon& p = cache->GetPolygonR()[i];
        const Vector* const points = cache->GetPointR();
        EXPECT_LT(Cross(points[p.b] - points[p.a], points[p.d] - points[p.a]).z, 0.0f) << i;
    }
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
