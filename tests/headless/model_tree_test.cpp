// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

namespace headless {

namespace {

using ModelTree = ModelTest;

/// Names of an object's tree as "A(B C(D))".
std::string outline(const BaseObject* object) {
    std::string text;
    for (; object; object = object->GetNext()) {
        text += object->GetName().GetUtf8();
        if (object->GetDown()) {
            text += "(" + outline(object->GetDown()) + ")";
        }
        text += object->GetNext() ? " " : "";
    }
    return text;
}

TEST_F(ModelTree, takesObjectsAtTheNamedPlaces) {
    const auto insert = [this](const char* name, BaseObject* parent, BaseObject* behind) {
        BaseObject* const object = BaseObject::Alloc(Onull);
        object->SetName(name);
        doc()->InsertObject(object, parent, behind);
        return object;
    };
    BaseObject* const a = insert("A", nullptr, nullptr);
    BaseObject* const b = insert("B", nullptr, nullptr);
    BaseObject* const c = insert("C", a, nullptr);
    insert("D", a, c);
    insert("E", nullptr, c);
    EXPECT_EQ(outline(doc()->GetFirstObject()), "B A(C E D)");
    EXPECT_EQ(a->GetPred(), b);
    EXPECT_EQ(c->GetUp(), a);

    b->InsertUnder(c);
    EXPECT_EQ(outline(doc()->GetFirstObject()), "A(C(B) E D)");
    // Not below itself, neither directly nor farther down.
    a->InsertUnder(b);
    doc()->InsertObject(a, nullptr, b);
    EXPECT_EQ(outline(doc()->GetFirstObject()), "A(C(B) E D)");
    c->Remove();
    EXPECT_EQ(outline(doc()->GetFirstObject()), "A(E D)");
    EXPECT_EQ(outline(c), "C(B)");
    BaseObject* removed = c;
    BaseObject::Free(removed);
}

TEST_F(ModelTree, isDeeperThanTheStack) {
    constexpr int depth = 20000;
    BaseObject* deepest = add(Onull);
    for (int i = 1; i < depth; ++i) {
        BaseObject* const child = BaseObject::Alloc(Onull);
        child->SetMl({{1, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
        child->InsertUnder(deepest);
        deepest = child;
    }
    addCube(deepest);
    build();
    EXPECT_EQ(deepest->GetMg().off.x, depth - 1);
    EXPECT_EQ(deepest->GetDown()->GetCache()->GetTopOrigin(), deepest->GetDown());

    auto* copy = static_cast<BaseObject*>(doc()->GetFirstObject()->GetClone());
    int levels = 0;
    for (const BaseObject* object = copy; object; object = object->GetDown()) {
        ++levels;
    }
    EXPECT_EQ(levels, depth + 1);
    BaseObject::Free(copy);

    BaseObject* state = SendModelingCommand(MCOMMAND_CURRENTSTATETOOBJECT, doc()->GetFirstObject(), doc());
    EXPECT_NE(state, nullptr);
    BaseObject::Free(state);
}

} // namespace

} // namespace headless
