// SPDX-License-Identifier: MIT
#pragma once

#include "host/document.h"
#include "host/object.h"

/// The shape of a light as polygons, made of a primitive of the host in a document of its own.
class LightShape {
public:
    /// Takes the primitive over; null gives no polygons.
    explicit LightShape(BaseObject* primitive);
    ~LightShape();
    LightShape(const LightShape&) = delete;
    LightShape& operator=(const LightShape&) = delete;

    /// Null when the host couldn't make them.
    PolygonObject* polygons() const { return static_cast<PolygonObject*>(polygons_); }

private:
    BaseDocument* document_;
    BaseObject* polygons_ = nullptr;
};

/// The primitive for a spot light, which shines along +Z: so small that it's a point, one millimetre wide
/// whatever the scene's scale. The caller owns primitives; null when there is no memory.
BaseObject* makeSpotPrimitive(float sceneScale);

/// For an area light, by the shape and sizes of the light's container. Null also for a shape that isn't
/// supported.
BaseObject* makeAreaPrimitive(const BaseContainer& light);
