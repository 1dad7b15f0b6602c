// SPDX-License-Identifier: MIT
#include "headless/build/modeling.h"

#include "headless/build/built_state.h"
#include "headless/build/caches.h"
#include "headless/build/object_roles.h"
#include "headless/build/primitive_mesh.h"
#include "headless/model/node_types.h"

namespace headless {

namespace {

std::unique_ptr<Object> stateOfBranch(const Object& root);

void setBaseFields(Object& made, const Object& source) {
    made.name = source.name;
    made.renderMode = source.renderMode;
    made.editorMode = source.editorMode;
    made.setLayer(source.layer());
}

/// Copies of the object's tags, but for those of kinds that made geometry brings with it.
void addTags(Object& made, const Object& source) {
    for (const Tag* tag = source.tags().first(); tag; tag = tag->next) {
        const bool comesWithGeometry = tag->type() == Tphong || tag->type() == Tuvw;
        if (!comesWithGeometry || !made.tag(tag->type())) {
            made.appendTag(clone(*tag));
        }
    }
}

/// What the object alone looks like, at its local matrix, without its children.
std::unique_ptr<Object> stateOf(const Object& object) {
    std::unique_ptr<Object> made;
    if (const Object* const deformed = object.deformCache()) {
        made = clone(*deformed, Owned::parts);
        made->matrix = object.matrix;
    } else if (const Object* const cache = object.cache()) {
        made = stateOfBranch(*cache);
        made->matrix = object.matrix * made->matrix;
        setBaseFields(*made, object);
        addTags(*made, object);
    } else if (isPrimitive(object.type()) || isGenerator(object)) {
        // Switched off, or without anything to show.
        const bool isPlugin = object.pluginData() != nullptr;
        made = isPlugin ? clone(object, Owned::parts) : createObject(Onull);
        made->matrix = object.matrix;
        setBaseFields(*made, object);
    } else {
        made = clone(object, Owned::parts);
    }
    return made;
}

std::unique_ptr<Object> stateOfBranch(const Object& root) {
    std::unique_ptr<Object> top = stateOf(root);
    // Objects whose children are still to come, with what became of them.
    std::vector<std::pair<const Object*, Object*>> waiting{{&root, top.get()}};
    while (!waiting.empty()) {
        const auto [source, made] = waiting.back();
        waiting.pop_back();
        for (const Object* child = source->children().first(); child; child = child->next) {
            if (!isInput(*child) && !isDeformer(*child)) {
                waiting.emplace_back(child, &made->appendChild(stateOf(*child)));
            }
        }
    }
    return top;
}

} // namespace

std::unique_ptr<Object> currentStateToObject(Object& object) {
    if (object.document()) {
        buildCaches(*object.document());
    } else {
        buildCaches(object);
    }
    return stateOfBranch(object);
}

} // namespace headless
