// SPDX-License-Identifier: MIT
#include "headless/build/hierarchy_walk.h"

#include "headless/build/caches.h"
#include "headless/model/handles.h"
#include "host/thread.h"

namespace headless {

namespace {

/// An object on the way from the top to the current one.
struct Level {
    const Object* object;
    Matrix matrix;
    void* data;
};

/// The walk's data of the objects on the way, freed in any case.
class Levels {
public:
    Levels(Hierarchy& walk, void* startData) : walk_(walk), startData_(startData) {}
    ~Levels() {
        while (!levels_.empty()) {
            pop();
        }
    }

    const Level& enter(const Object& object) {
        while (!levels_.empty() && levels_.back().object != object.parent()) {
            pop();
        }
        void* const outer = levels_.empty() ? startData_ : levels_.back().data;
        const Matrix matrix = levels_.empty() ? object.matrix : levels_.back().matrix * object.matrix;
        levels_.push_back({&object, matrix, walk_.Alloc()});
        if (outer && levels_.back().data) {
            walk_.CopyTo(outer, levels_.back().data);
        }
        return levels_.back();
    }

private:
    void pop() {
        walk_.Free(levels_.back().data);
        levels_.pop_back();
    }

    Hierarchy& walk_;
    void* startData_;
    std::vector<Level> levels_;
};

} // namespace

bool runHierarchy(Hierarchy& walk, Document& document, void* startData, BaseThread* thread) {
    if (!buildCaches(document, thread)) {
        return false;
    }
    Levels levels(walk, startData);
    for (Object* top = document.objects().first(); top; top = top->next) {
        for (Object* object = top; object; object = object->nextInBranch(*top)) {
            if (thread && thread->TestBreak()) {
                return false;
            }
            const Level& level = levels.enter(*object);
            if (!walk.Do(level.data, toHost(object), level.matrix, (object->info & BIT_CONTROLOBJECT) != 0)) {
                return true;
            }
        }
    }
    return true;
}

} // namespace headless
