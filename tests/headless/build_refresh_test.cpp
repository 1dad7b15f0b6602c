// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

#include <functional>

namespace headless {

namespace {

/// A document with one object of each way to get geometry from others.
class BuildRefresh : public ModelTest {
protected:
    BuildRefresh() {
        sphere = add(Osphere);
        group = add(Onull);
        cube = addCube(group);
        texture = static_cast<::TextureTag*>(cube->MakeTag(Ttexture));
        texture->SetMl({{9, 0, 0}, {}, {}, {}});
        instance = addInstance(group, false);
        array = add(Oarray);
        inArray = addInstance(cube, false, array);
        deformed = add(Onull);
        mesh = addQuad(deformed);
        bend = addBend(deformed);
        build();
    }

    std::vector<BaseObject*> caches() const {
        return {sphere->GetCache(),
                cube->GetCache(),
                instance->GetCache(),
                instance->GetCache() ? instance->GetCache()->GetDown()->GetCache() : nullptr,
                array->GetCache(),
                mesh->GetDeformCache()};
    }

    BaseObject* sphere;
    BaseObject* group;
    BaseObject* cube;
    ::TextureTag* texture;
    BaseObject* instance;
    BaseObject* array;
    BaseObject* inArray;
    BaseObject* deformed;
    ::PolygonObject* mesh;
    BaseObject* bend;
};

TEST_F(BuildRefresh, keepsCachesOfWhatDidNotChange) {
    const std::vector<BaseObject*> before = caches();
    for (BaseObject* const cache : before) {
        ASSERT_NE(cache, nullptr);
    }
    build();
    EXPECT_EQ(caches(), before);
    // Where a generator or what is deformed stands as a whole doesn't matter to its cache.
    for (BaseObject* const object : {sphere, group, instance, array, deformed}) {
        move(object, {1, 2, 3});
    }
    build();
    EXPECT_EQ(caches(), before);
}

TEST_F(BuildRefresh, followsEveryChange) {
    struct Change {
        const char* name;
        std::function<void()> make;
        /// Caches that must be made anew, in the order of `caches`.
        std::vector<int> fresh;
    };
    const Change changes[] = {
        {"parameter", [this] { sphere->GetDataInstance()->SetReal(PRIM_SPHERE_RAD, 7.0f); }, {0}},
        {"name", [this] { sphere->SetName("Ball"); }, {0}},
        {"tag of a generator", [this] { sphere->MakeTag(Tphong); }, {0}},
        {"linked object's parameter",
         [this] { cube->GetDataInstance()->SetVector(PRIM_CUBE_SIZE, Vector(1, 1, 1)); },
         {1, 2, 3, 4}},
        {"place inside a linked branch", [this] { move(cube, Vector(5, 0, 0)); }, {2, 3}},
        {"texture of a linked object", [this] { texture->SetMl(Matrix()); }, {1, 2, 3, 4}},
        {"new child of a linked object", [this] { addCube(cube); }, {2, 3, 4}},
        {"render mode in a linked branch", [this] { fromHost(cube)->renderMode = MODE_OFF; }, {1, 2, 3, 4}},
        {"place of an array's input", [this] { move(inArray, Vector(0, 3, 0)); }, {4}},
        {"point", [this] { mesh->GetPointW()[2].x = 3.0f; }, {5}},
        {"polygon", [this] { mesh->GetPolygonW()[0].d = 2; }, {5}},
        {"tag of a mesh", [this] { mesh->MakeTag(Tphong); }, {5}},
        {"deformer's parameter", [this] { bend->GetDataInstance()->SetReal(DEFORM_STRENGTH, 0.1f); }, {5}},
        {"deformer's place", [this] { move(bend, Vector(0, 1, 0)); }, {5}},
        {"mesh's place under a deformer", [this] { move(mesh, Vector(1, 0, 0)); }, {5}},
        {"second deformer", [this] { addBend(deformed); }, {5}},
    };
    for (const Change& change : changes) {
        // Held by links: a new cache may come to lie where the old one was.
        std::vector<BaseLink> before;
        for (BaseObject* const cache : caches()) {
            before.emplace_back(cache);
        }
        change.make();
        build();
        const std::vector<BaseObject*> after = caches();
        for (size_t i = 0; i < after.size(); ++i) {
            ASSERT_NE(after[i], nullptr) << change.name;
            const bool isFresh = before[i].GetLink() != after[i];
            const bool expected =
                std::count(change.fresh.begin(), change.fresh.end(), static_cast<int>(i)) > 0;
            // A name or a mode is no part of a primitive's shape, but nothing is lost by a new cache.
            EXPECT_EQ(isFresh, expected) << change.name << ", cache " << i;
        }
    }
}

} // namespace

} // namespace headless
