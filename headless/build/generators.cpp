// SPDX-License-Identifier: MIT
#include "headless/build/generators.h"

#include "headless/build/object_roles.h"
#include "headless/build/primitive_mesh.h"
#include "headless/model/handles.h"
#include "headless/model/node_types.h"
#include "headless/model/primitive_ids.h"
#include "headless/model/rotation.h"
#include "host/plugin_data.h"

#include <algorithm>
#include <numbers>

namespace headless {

std::unique_ptr<Object> generatePrimitive(const Object& primitive) {
    std::unique_ptr<PolygonNode> made = toPolygons(std::move(*makePrimitive(primitive)));
    made->name = primitive.name;
    if (const Tag* const phong = primitive.tag(Tphong)) {
        made->appendTag(clone(*phong));
    }
    return made;
}

std::unique_ptr<Object> generateInstance(const Object& instance) {
    const Object* const target = instanceTarget(instance);
    if (!target) {
        return nullptr;
    }
    std::unique_ptr<Object> made = clone(*target);
    made->matrix = Matrix();
    return made;
}

std::unique_ptr<Object> generateArray(const Object& array) {
    const Object* const input = inputOf(array);
    const int32_t copies = std::max(array.data.GetLong(ARRAY_COPIES), 0);
    if (!input) {
        return nullptr;
    }
    const float radius = array.data.GetReal(ARRAY_RADIUS);
    std::unique_ptr<Object> made = createObject(Onull);
    made->name = array.name;
    for (int32_t i = 0; i < copies; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / copies;
        Matrix place = rotationFromHPB({static_cast<float>(angle), 0.0f, 0.0f});
        place.off = place.axisX * radius;
        Object& copy = made->appendChild(clone(*input));
        copy.matrix = place * input->matrix;
    }
    return made;
}

std::unique_ptr<Object> generateVirtualObjects(Object& object, BaseThread* thread) {
    HierarchyHelp help;
    help.document = toHost(object.document());
    help.thread = thread;
    auto& data = *static_cast<ObjectData*>(object.pluginData());
    Object* const made = fromHost(data.GetVirtualObjects(toHost(&object), &help));
    if (!made) {
        return nullptr;
    }
    if (made->parentOrCacheParent() || made->document()) {
        return clone(*made); // It still belongs to someone else.
    }
    return std::unique_ptr<Object>(made);
}

} // namespace headless
