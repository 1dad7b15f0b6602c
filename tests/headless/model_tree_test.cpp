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

TEST_F(ModelTree, keepsTagsInTheirOrder) {
    BaseObject* const cube = addCube();
    BaseTag* const first = cube->MakeTag(Ttexture);
    BaseTag* const phong = cube->MakeTag(Tphong);
    BaseTag* const second = cube->MakeTag(Ttexture);
    BaseTag* const front = BaseTag::Alloc(Tmotionblur);
    cube->InsertTag(front);

    EXPECT_EQ(cube->GetFirstTag(), front);
    EXPECT_EQ(front->GetNext(), first);
    EXPECT_EQ(cube->GetLastTag(), second);
    EXPECT_EQ(cube->GetTag(Ttexture, 1), second);
    EXPECT_EQ(cube->GetTag(Ttexture, 2), nullptr);
    EXPECT_EQ(phong->GetObject(), cube);
    EXPECT_EQ(phong->GetDocument(), doc());
    phong->Remove();
    EXPECT_EQ(first->GetNext(), second);
    EXPECT_EQ(phong->GetObject(), nullptr);
    BaseTag* freed = phong;
    BaseTag::Free(freed);
    EXPECT_EQ(BaseTag::Alloc(Ocube), nullptr) << "an object's number names no tag";
}

TEST_F(ModelTree, givesLayersWithThoseAboveThem) {
    Layer& upper = document->appendLayer(std::make_unique<Layer>());
    Layer& lower = upper.insertChild(std::make_unique<Layer>(), nullptr);
    BaseObject* const cube = addCube();
    EXPECT_EQ(cube->GetLayerData(doc()), nullptr);

    fromHost(cube)->setLayer(&lower);
    upper.setOwnFlags({.view = true, .render = false, .manager = true});
    EXPECT_TRUE(cube->GetLayerData(doc(), true)->render);
    EXPECT_FALSE(cube->GetLayerData(doc())->render);
    build();
    EXPECT_FALSE(cube->GetCache()->GetLayerData(doc())->render);
    upper.setOwnFlags({});
    EXPECT_TRUE(cube->GetLayerData(doc())->render);
    EXPECT_EQ(addCube(cube)->GetLayerData(doc()), nullptr) << "children have layers of their own";

    removeNode(upper);
    EXPECT_EQ(cube->GetLayerData(doc()), nullptr);
}

TEST_F(ModelTree, composesMatrices) {
    BaseObject* const parent = add(Onull);
    BaseObject* const child = add(Onull, parent);
    parent->SetMl({{10, 0, 0}, {0, 2, 0}, {-2, 0, 0}, {0, 0, 2}});
    child->SetMl({{1, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}});
    EXPECT_TRUE(isNear(child->GetMg().off, {10, 2, 0}));
    EXPECT_TRUE(isNear(child->GetMg().axisX, {0, 2, 0}));

    child->SetMg(Matrix({10, 4, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}));
    EXPECT_TRUE(isNear(child->GetMl().off, {2, 0, 0}));
    EXPECT_TRUE(isNear(child->GetMg().axisX, {1, 0, 0}));
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

TEST_F(ModelTree, nestsShadersAndLayersDeeperThanTheStack) {
    Material& material = document->appendMaterial(createMaterial(Mmaterial));
    Shader* shader = &material.insertShader(createShader(Xbitmap));
    Layer* layer = &document->appendLayer(std::make_unique<Layer>());
    for (int i = 0; i < 20000; ++i) {
        shader = &shader->insertChild(createShader(Xbitmap), nullptr);
        layer = &layer->insertChild(std::make_unique<Layer>(), nullptr);
    }
    EXPECT_EQ(shader->material(), &material);
    std::unique_ptr<Document> copy = clone(*document);
    EXPECT_NE(copy->materials().first()->shaders().first()->children().first(), nullptr);
}

TEST_F(ModelTree, makesObjectsWithTheirTypesDefaults) {
    for (const NodeTypeInfo* const type : NodeTypes::instance().all()) {
        if (type->kind != NodeKind::object) {
            continue;
        }
        BaseObject* object = BaseObject::Alloc(type->id);
        EXPECT_EQ(object->GetName().GetUtf8(), type->name);
        EXPECT_TRUE(object->IsInstanceOf(Obase));
        EXPECT_EQ(object->GetRenderMode(), MODE_UNDEF);
        EXPECT_TRUE(object->GetDeformMode());
        BaseObject::Free(object);
    }
    EXPECT_EQ(findParameter(Osphere, "PRIM_SPHERE_RAD")->id, 1110);
    EXPECT_EQ(findParameter(Osphere, 1110)->name, "PRIM_SPHERE_RAD");
    EXPECT_FALSE(findParameter(Osphere, "PRIM_CUBE_SIZE"));
    EXPECT_EQ(NodeTypes::instance().findByName(NodeKind::object, "cUBE")->id, Ocube);
    EXPECT_EQ(NodeTypes::instance().findByName(NodeKind::object, "5159")->id, Ocube);
    EXPECT_EQ(NodeTypes::instance().findByName(NodeKind::tag, "Cube"), nullptr);
}

} // namespace

} // namespace headless
