// SPDX-License-Identifier: MIT
#include "headless/build/built_state.h"

#include "headless/build/object_roles.h"

namespace headless {

const Object& shownObject(const Object& object) {
    const Object* const deformed = object.deformCache();
    const Object* const cache = deformed ? deformed : object.cache();
    return cache ? *cache : object;
}

void forEachMesh(const Object& root, const Object* outer,
                 const std::function<void(const BuiltMesh&)>& visit) {
    const Object* object = &root;
    while (object) {
        if (object != &root && isInput(*object)) {
            object = object->nextBehind(root);
            continue;
        }
        const Object& shown = shownObject(*object);
        if (&shown != object && !asPolygons(object)) {
            forEachMesh(shown, outer, visit);
        } else if (const PolygonNode* const mesh = asPolygons(&shown)) {
            visit({mesh, matrixTo(*mesh, outer)});
        }
        object = object->nextInBranch(root);
    }
}

} // namespace headless
