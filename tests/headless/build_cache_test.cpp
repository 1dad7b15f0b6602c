// SPDX-License-Identifier: MIT
#include "headless/model/warnings.h"
#include "headless/model_fixture.h"

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

} // namespace

} // namespace headless
