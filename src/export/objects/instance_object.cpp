// SPDX-License-Identifier: MIT
#include "export/objects/instance_object.h"

#include "host/basedraw.h"
#include "host/document.h"
#include "host/ids.h"
#include "shared/described_data.h"
#include "shared/parameter_ids.h"
#include "shared/plugin_ids.h"

#include <utility>

namespace {

BaseObject* linkedObject(const BaseObject* instance, const BaseDocument* document) {
    return instance->GetDataInstance()->GetObjectLink(INSTANCE_LINK, document);
}

/// An object below its own link has no end: it shows nothing.
bool isParentOf(const BaseObject* candidate, const BaseObject* object) {
    for (; object; object = object->GetUp()) {
        if (object == candidate) {
            return true;
        }
    }
    return false;
}

void drawBox(BaseDraw* view, const Vector& centre, const Vector& radius) {
    const auto corner = [&](int index) {
        return centre + Vector(index & 1 ? radius.x : -radius.x, index & 2 ? radius.y : -radius.y,
                               index & 4 ? radius.z : -radius.z);
    };
    for (int from = 0; from < 8; ++from) {
        for (const int axis : {1, 2, 4}) {
            if ((from & axis) == 0) {
                view->DrawLine(corner(from), corner(from | axis));
            }
        }
    }
}

void drawPolygonObject(BaseDraw* view, const PolygonObject* object, bool points) {
    const Vector* const positions = object->GetPointR();
    if (points) {
        for (int32_t i = 0; i < object->GetPointCount(); ++i) {
            view->DrawPoint(positions[i]);
        }
        return;
    }
    const CPolygon* const polygons = object->GetPolygonR();
    for (int32_t i = 0; i < object->GetPolygonCount(); ++i) {
        const CPolygon& polygon = polygons[i];
        view->DrawLine(positions[polygon.a], positions[polygon.b]);
        view->DrawLine(positions[polygon.b], positions[polygon.c]);
        if (!polygon.IsTriangle()) {
            view->DrawLine(positions[polygon.c], positions[polygon.d]);
        }
        view->DrawLine(positions[polygon.d], positions[polygon.a]);
    }
}

/// Draws an object with its caches and children; `matrix` stands for the object's own matrix.
void drawTree(BaseDraw* view, const BaseObject* object, const Matrix& matrix, bool points) {
    if (const BaseObject* const deformed = object->GetDeformCache()) {
        drawTree(view, deformed, matrix, points);
    } else if (const BaseObject* const cache = object->GetCache()) {
        drawTree(view, cache, matrix * cache->GetMl(), points);
    } else if (object->GetType() == Opolygon && !object->GetBit(BIT_CONTROLOBJECT)) {
        view->SetMatrix(matrix);
        drawPolygonObject(view, static_cast<const PolygonObject*>(object), points);
    }
    for (const BaseObject* child = object->GetDown(); child; child = child->GetNext()) {
        drawTree(view, child, matrix * child->GetMl(), points);
    }
}

} // namespace

bool InstanceObject::Init(BaseList2D* node) {
    node->GetDataInstance()->SetLink(INSTANCE_LINK, nullptr);
    node->GetDataInstance()->SetLong(INSTANCE_DRAW_MODE, INSTANCE_DRAW_POINTS);
    return true;
}

bool InstanceObject::GetDDescription(BaseList2D* /*node*/, Description* description, int32_t& flags) {
    return loadOwnDescription(description, PLUGINID_INSTANCE, flags);
}

bool InstanceObject::Draw(BaseObject* object, BaseDraw* view, BaseDrawHelp* help) {
    const BaseObject* const link = linkedObject(object, help->document);
    if (!link || isParentOf(link, object)) {
        return true;
    }
    view->SetMatrix(help->matrix);
    view->SetPen(Vector(1.0f, 1.0f, 1.0f));
    const int32_t mode = object->GetDataInstance()->GetLong(INSTANCE_DRAW_MODE, INSTANCE_DRAW_POINTS);
    if (mode == INSTANCE_DRAW_BOX) {
        drawBox(view, link->GetMp(), link->GetRad());
    } else {
        drawTree(view, link, help->matrix, mode == INSTANCE_DRAW_POINTS);
    }
    return true;
}

void InstanceObject::GetDimension(BaseObject* object, Vector* centre, Vector* radius) {
    const BaseObject* const link = linkedObject(object, object->GetDocument());
    *centre = Vector();
    if (!link) {
        *radius = Vector(50.0f, 50.0f, 50.0f);
    } else if (isParentOf(link, object)) {
        *radius = Vector();
    } else {
        *centre = link->GetMp();
        *radius = link->GetRad();
    }
}

BaseObject* InstanceObject::GetVirtualObjects(BaseObject* object, HierarchyHelp* help) {
    const BaseObject* const link = linkedObject(object, help->document);
    if (!object->GetDeformMode() || !link || isParentOf(link, object)) {
        return nullptr;
    }
    auto* const copy = static_cast<BaseObject*>(link->GetClone());
    if (copy) {
        copy->SetMl(Matrix());
    }
    return copy;
}
