// SPDX-License-Identifier: MIT
#include "headless/build/caches.h"

#include "headless/build/built_state.h"
#include "headless/build/cache_builder.h"
#include "headless/build/object_roles.h"
#include "headless/build/primitive_mesh.h"
#include "headless/model/handles.h"
#include "host/plugin_data.h"

#include <algorithm>

namespace headless {

namespace {

class PointBox {
public:
    void add(const Vector& p) {
        lower_ =
            empty_ ? p : Vector(std::min(lower_.x, p.x), std::min(lower_.y, p.y), std::min(lower_.z, p.z));
        upper_ =
            empty_ ? p : Vector(std::max(upper_.x, p.x), std::max(upper_.y, p.y), std::max(upper_.z, p.z));
        empty_ = false;
    }
    ObjectBounds bounds() const { return {(lower_ + upper_) * 0.5f, (upper_ - lower_) * 0.5f}; }

private:
    Vector lower_;
    Vector upper_;
    bool empty_ = true;
};

} // namespace

bool buildCaches(Document& document, BaseThread* thread) {
    CacheBuilder builder(thread);
    for (Object* object = document.objects().first(); object; object = object->next) {
        builder.buildBranch(*object);
    }
    if (builder.needsDeforming()) {
        for (Object* object = document.objects().first(); object; object = object->next) {
            builder.deformBranch(*object);
        }
    }
    return !builder.stopped();
}

void buildCaches(Object& object) {
    CacheBuilder builder(nullptr);
    builder.buildBranch(object);
    if (builder.needsDeforming()) {
        builder.deformBranch(object);
    }
}

ObjectBounds objectBounds(Object& object) {
    if (object.pluginData()) {
        ObjectBounds bounds;
        static_cast<ObjectData*>(object.pluginData())
            ->GetDimension(toHost(&object), &bounds.centre, &bounds.radius);
        return bounds;
    }
    const Object& shown = shownObject(object);
    if (&shown == &object) {
        const std::optional<geometry::PolyMesh> primitive = makePrimitive(object);
        const PolygonNode* const mesh = asPolygons(&object);
        const geometry::Bounds bounds = geometry::boundsOf(primitive ? primitive->points
                                                           : mesh    ? mesh->points
                                                                     : std::span<const Vector>());
        return {bounds.centre, bounds.radius};
    }
    PointBox box;
    forEachMesh(shown, &object, [&box](const BuiltMesh& built) {
        const geometry::Bounds bounds = geometry::boundsOf(built.mesh->points);
        for (int corner = 0; corner < 8; ++corner) {
            const Vector sign(corner & 1 ? 1.0f : -1.0f, corner & 2 ? 1.0f : -1.0f,
                              corner & 4 ? 1.0f : -1.0f);
            box.add(built.matrix * (bounds.centre + Vector(bounds.radius.x * sign.x, bounds.radius.y * sign.y,
                                                           bounds.radius.z * sign.z)));
        }
    });
    return box.bounds();
}

} // namespace headless
