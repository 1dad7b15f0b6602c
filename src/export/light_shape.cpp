// SPDX-License-Identifier: MIT
#include "export/light_shape.h"

#include "host/ids.h"

namespace {

constexpr int32_t ROUND_SEGMENTS = 50;

BaseObject* makeDisc(float radius) {
    BaseObject* const disc = BaseObject::Alloc(Odisc);
    if (disc) {
        BaseContainer* const data = disc->GetDataInstance();
        data->SetReal(PRIM_DISC_RAD, radius);
        data->SetLong(PRIM_DISC_SUB, 1);
        data->SetLong(PRIM_DISC_SEG, ROUND_SEGMENTS);
        data->SetLong(PRIM_AXIS, PRIM_AXIS_PLUS_Z);
    }
    return disc;
}

BaseObject* makePlane(float width, float height) {
    BaseObject* const plane = BaseObject::Alloc(Oplane);
    if (plane) {
        BaseContainer* const data = plane->GetDataInstance();
        data->SetReal(PRIM_PLANE_WIDTH, width);
        data->SetReal(PRIM_PLANE_HEIGHT, height);
        data->SetLong(PRIM_PLANE_SUBW, 1);
        data->SetLong(PRIM_PLANE_SUBH, 1);
        data->SetLong(PRIM_AXIS, PRIM_AXIS_PLUS_Z);
    }
    return plane;
}

BaseObject* makeSphere(float radius, bool isHemisphere) {
    BaseObject* const sphere = BaseObject::Alloc(Osphere);
    if (sphere) {
        BaseContainer* const data = sphere->GetDataInstance();
        data->SetReal(PRIM_SPHERE_RAD, radius);
        data->SetLong(PRIM_SPHERE_SUB, ROUND_SEGMENTS);
        if (isHemisphere) {
            data->SetLong(PRIM_SPHERE_TYPE, PRIM_SPHERE_TYPE_HEMISPHERE);
        }
    }
    return sphere;
}

BaseObject* makeCylinder(float radius, float height) {
    BaseObject* const cylinder = BaseObject::Alloc(Ocylinder);
    if (cylinder) {
        BaseContainer* const data = cylinder->GetDataInstance();
        data->SetReal(PRIM_CYLINDER_RADIUS, radius);
        data->SetReal(PRIM_CYLINDER_HEIGHT, height);
        data->SetLong(PRIM_CYLINDER_SEG, ROUND_SEGMENTS);
        data->SetLong(PRIM_AXIS, PRIM_AXIS_PLUS_Z);
    }
    return cylinder;
}

BaseObject* makeCube(const Vector& size) {
    BaseObject* const cube = BaseObject::Alloc(Ocube);
    if (cube) {
        cube->GetDataInstance()->SetVector(PRIM_CUBE_SIZE, size);
        cube->GetDataInstance()->SetLong(PRIM_AXIS, PRIM_AXIS_PLUS_Z);
    }
    return cube;
}

} // namespace

LightShape::LightShape(BaseObject* primitive) : document_(primitive ? BaseDocument::Alloc() : nullptr) {
    if (!document_) {
        BaseObject::Free(primitive);
        return;
    }
    document_->InsertObject(primitive);
    polygons_ = SendModelingCommand(MCOMMAND_CURRENTSTATETOOBJECT, primitive, document_);
    if (polygons_ && !polygons_->IsInstanceOf(Opolygon)) {
        BaseObject::Free(polygons_);
    }
}

LightShape::~LightShape() {
    BaseObject::Free(polygons_);
    BaseDocument::Free(document_);
}

BaseObject* makeSpotPrimitive(float sceneScale) {
    const float side = 0.001f / sceneScale;
    return makePlane(side, side);
}

BaseObject* makeAreaPrimitive(const BaseContainer& light) {
    const Vector size(light.GetReal(LIGHT_AREADETAILS_SIZEX), light.GetReal(LIGHT_AREADETAILS_SIZEY),
                      light.GetReal(LIGHT_AREADETAILS_SIZEZ));
    const float flatRadius = (size.x + size.y) * 0.5f * 0.5f;
    const float roundRadius = (size.x + size.y + size.z) * 0.33333334f * 0.5f;
    switch (light.GetLong(LIGHT_AREADETAILS_SHAPE)) {
    case LIGHT_AREADETAILS_SHAPE_DISC:
        return makeDisc(flatRadius);
    case LIGHT_AREADETAILS_SHAPE_RECTANGLE:
        return makePlane(size.x, size.y);
    case LIGHT_AREADETAILS_SHAPE_SPHERE:
        return makeSphere(roundRadius, false);
    case LIGHT_AREADETAILS_SHAPE_CYLINDER:
        return makeCylinder(flatRadius, size.z);
    case LIGHT_AREADETAILS_SHAPE_CUBE:
        return makeCube(size);
    case LIGHT_AREADETAILS_SHAPE_HEMISPHERE:
        return makeSphere(roundRadius, true);
    default:
        return nullptr;
    }
}
