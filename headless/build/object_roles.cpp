// SPDX-License-Identifier: MIT
#include "headless/build/object_roles.h"

#include "headless/build/primitive_mesh.h"
#include "headless/model/handles.h"

namespace headless {

namespace {

bool takesInput(int32_t type) {
    return type == Oarray || type == Osymmetry;
}

} // namespace

bool isGenerator(const Object& object) {
    if (!object.enabled) {
        return false;
    }
    const int32_t type = object.type();
    return (type == Oinstance && !object.data.GetBool(INSTANCEOBJECT_RENDERINSTANCE)) || isPrimitive(type) ||
           takesInput(type) || object.pluginData();
}

bool isDeformer(const Object& object) {
    const int32_t type = object.type();
    return type == Obend || type == Otwist || type == Otaper || type == Obulge;
}

Object* inputOf(const Object& generator) {
    if (!generator.enabled || !takesInput(generator.type())) {
        return nullptr;
    }
    Object* child = generator.children().first();
    while (child && isDeformer(*child)) {
        child = child->next;
    }
    return child;
}

bool isInput(const Object& object) {
    return object.parent() && inputOf(*object.parent()) == &object;
}

Object* instanceTarget(const Object& object) {
    if (object.type() != Oinstance) {
        return nullptr;
    }
    return static_cast<Object*>(fromHost(object.data.GetLink(INSTANCEOBJECT_LINK, nullptr, Obase)));
}

Matrix matrixTo(const Object& object, const Object* outer) {
    Matrix matrix;
    for (const Object* level = &object; level && level != outer; level = level->parentOrCacheParent()) {
        matrix = level->matrix * matrix;
    }
    return matrix;
}

} // namespace headless
