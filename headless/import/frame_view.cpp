// SPDX-License-Identifier: MIT
#include "headless/import/frame_view.h"

#include "headless/model/handles.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace headless {

namespace {

struct Box {
    Vector min{std::numeric_limits<float>::max(), std::numeric_limits<float>::max(),
               std::numeric_limits<float>::max()};
    Vector max{-min.x, -min.y, -min.z};

    void add(const Vector& p) {
        min = {std::min(min.x, p.x), std::min(min.y, p.y), std::min(min.z, p.z)};
        max = {std::max(max.x, p.x), std::max(max.y, p.y), std::max(max.z, p.z)};
    }
};

/// Those of the object or of what it's an instance of; null when there are none.
const PolygonNode* polygonsOf(const Object& object) {
    return object.type() == Oinstance ? asPolygons(static_cast<const Object*>(
                                            fromHost(object.data.GetLink(INSTANCEOBJECT_LINK, nullptr))))
                                      : asPolygons(&object);
}

Box boundsOf(const Document& document) {
    Box box;
    std::vector<std::pair<const Object*, Matrix>> waiting;
    for (const Object* top = document.objects().first(); top; top = top->next) {
        waiting.emplace_back(top, top->matrix);
    }
    while (!waiting.empty()) {
        const auto [object, world] = waiting.back();
        waiting.pop_back();
        if (const PolygonNode* const polygons = polygonsOf(*object)) {
            for (const Vector& point : polygons->points) {
                box.add(world * point);
            }
        }
        for (const Object* child = object->children().first(); child; child = child->next) {
            waiting.emplace_back(child, world * child->matrix);
        }
    }
    return box;
}

} // namespace

void frameView(Document& document) {
    const Box box = boundsOf(document);
    const float radius = 0.5f * (box.max - box.min).GetLength();
    if (!(box.min.x <= box.max.x) || !std::isfinite(radius) || !(radius > 0.0f)) {
        return;
    }
    Object& camera = document.view().editorCamera();
    const float halfHeight = std::atan(0.75f * std::tan(0.5f * camera.data.GetReal(CAMERA_FOV)));
    const float distance = radius / std::sin(halfHeight);
    const Vector middle = (box.min + box.max) * 0.5f;
    const Vector forward = Vector(0.35f, -0.3f, 1.0f).GetNormalized();
    const Vector right = Cross(Vector(0.0f, 1.0f, 0.0f), forward).GetNormalized();
    camera.matrix = {middle - forward * distance, right, Cross(forward, right), forward};
    camera.setParameter(CAMERA_TARGET_DISTANCE, GeData(distance));
}

} // namespace headless
