// SPDX-License-Identifier: MIT
#include "headless/model/warnings.h"
#include "headless/model_fixture.h"

namespace headless {

namespace {

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
