// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"
#include "host/inexclude.h"

namespace headless {

namespace {

constexpr int32_t linkId = 1;
constexpr int32_t innerId = 2;
constexpr int32_t listId = 3;

using ModelLinks = ModelTest;

/// Sets a link in each of the places where a container can hold one.
void linkEverywhere(BaseObject* from, BaseObject* to) {
    BaseContainer& data = *from->GetDataInstance();
    data.SetLink(linkId, to);
    BaseContainer inner;
    inner.SetLink(linkId, to);
    data.SetContainer(innerId, inner);
    InExcludeData list;
    list.InsertObject(to, 7);
    data.SetData(listId, GeData(list));
}

/// The nodes that the links of `linkEverywhere` lead to.
std::vector<BaseList2D*> targets(const BaseObject* from) {
    const BaseContainer& data = *from->GetDataInstance();
    const auto* const list =
        static_cast<InExcludeData*>(data.GetCustomDataType(listId, CUSTOMDATATYPE_INEXCLUDE_LIST));
    return {data.GetLink(linkId, nullptr), data.GetContainer(innerId).GetLink(linkId, nullptr),
            list->ObjectFromIndex(nullptr, 0)};
}

TEST_F(ModelLinks, goNullWhenTheTargetDies) {
    BaseObject* const from = add(Onull);
    BaseObject* const branch = add(Onull);
    BaseObject* const target = addCube(branch);
    linkEverywhere(from, target);
    const BaseLink outside(target);
    EXPECT_EQ(targets(from), std::vector<BaseList2D*>(3, target));

    BaseObject* freed = branch;
    BaseObject::Free(freed);

    EXPECT_EQ(targets(from), std::vector<BaseList2D*>(3, nullptr));
    EXPECT_EQ(outside.GetLink(), nullptr);
    EXPECT_EQ(from->GetNext(), nullptr);
}

TEST_F(ModelLinks, inCopiesLeadToTheCopiesOfWhatWasCopied) {
    BaseObject* const parent = add(Onull);
    BaseObject* const inside = addCube(parent);
    BaseObject* const outside = addCube();
    BaseObject* const toInside = add(Onull, parent);
    BaseObject* const toOutside = add(Onull, parent);
    linkEverywhere(toInside, inside);
    linkEverywhere(toOutside, outside);

    auto* copy = static_cast<BaseObject*>(parent->GetClone());

    BaseObject* const copyOfInside = copy->GetDown();
    EXPECT_EQ(copy->GetDocument(), nullptr);
    EXPECT_EQ(targets(copyOfInside->GetNext()), std::vector<BaseList2D*>(3, copyOfInside));
    EXPECT_EQ(targets(copyOfInside->GetNext()->GetNext()), std::vector<BaseList2D*>(3, outside));
    EXPECT_EQ(targets(toInside), std::vector<BaseList2D*>(3, inside));
    BaseObject::Free(copy);
}

} // namespace

} // namespace headless
