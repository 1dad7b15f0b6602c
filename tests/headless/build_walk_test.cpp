// SPDX-License-Identifier: MIT
#include "headless/model_fixture.h"

namespace headless {

namespace {

/// Notes the objects with the depth that its data counts, and whether all data was given back.
class Recorder : public Hierarchy {
public:
    void* Alloc() override {
        ++alive;
        return new int(0);
    }
    void Free(void* data) override {
        --alive;
        delete static_cast<int*>(data);
    }
    void CopyTo(void* source, void* destination) override {
        *static_cast<int*>(destination) = *static_cast<int*>(source) + 1;
    }
    bool Do(void* data, BaseObject* object, const Matrix& matrix, bool controlObject) override {
        names += object->GetName().GetUtf8() + std::to_string(*static_cast<int*>(data));
        names += controlObject ? "c " : " ";
        lastX = matrix.off.x;
        EXPECT_NE(object->GetCache(), nullptr) << "all caches are built before the first call";
        return static_cast<int>(std::count(names.begin(), names.end(), ' ')) < stopAfter;
    }

    std::string names;
    float lastX = 0.0f;
    int alive = 0;
    int stopAfter = 1000;
};

class BuildWalk : public ModelTest {
protected:
    BaseObject* addNamedCube(const char* name, BaseObject* parent) {
        BaseObject* const cube = addCube(parent);
        cube->SetName(name);
        move(cube, {1, 0, 0});
        return cube;
    }
};

TEST_F(BuildWalk, visitsParentsFirstWithDataOfTheirOwn) {
    BaseObject* const a = addNamedCube("A", nullptr);
    BaseObject* const b = addNamedCube("B", a);
    addNamedCube("C", b);
    addNamedCube("D", a);
    BaseObject* const array = add(Oarray);
    array->SetName("R");
    addNamedCube("I", array);
    Recorder walk;
    int start = 4;
    EXPECT_TRUE(walk.Run(doc(), true, 1.0f, 20, &start, nullptr));
    EXPECT_EQ(walk.names, "A5 B6 C7 D6 R5 I6c ");
    EXPECT_EQ(walk.alive, 0);

    Recorder stopped;
    stopped.stopAfter = 3;
    EXPECT_TRUE(stopped.Run(doc(), true, 1.0f, 20, nullptr, nullptr));
    EXPECT_EQ(stopped.names, "A0 B1 C2 ");
    EXPECT_EQ(stopped.lastX, 3.0f);
    EXPECT_EQ(stopped.alive, 0);
}

} // namespace

} // namespace headless
