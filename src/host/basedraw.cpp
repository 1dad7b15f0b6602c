// SPDX-License-Identifier: MIT
#include "host/basedraw.h"

#include "host/tables.h"

BaseObject* BaseDraw::GetSceneCamera(const BaseDocument* document) const {
    return HostTables()->draw->GetSceneCamera(this, document);
}

void BaseDraw::GetSafeFrame(int32_t* left, int32_t* top, int32_t* right, int32_t* bottom) const {
    HostTables()->draw->GetSafeFrame(this, left, top, right, bottom);
}

void BaseDraw::SetMatrix(const Matrix& matrix) {
    HostTables()->draw->SetMatrix(this, matrix);
}

void BaseDraw::SetPen(const Vector& colour) {
    HostTables()->draw->SetPen(this, colour);
}

void BaseDraw::SetTransparency(int32_t transparency) {
    HostTables()->draw->SetTransparency(this, transparency);
}

void BaseDraw::DrawPoint(const Vector& point) {
    HostTables()->draw->DrawPoint(this, point);
}

void BaseDraw::DrawLine(const Vector& from, const Vector& to) {
    HostTables()->draw->DrawLine(this, from, to);
}

void BaseDraw::DrawLine2D(const Vector& from, const Vector& to) {
    HostTables()->draw->DrawLine2D(this, from, to);
}

void BaseDraw::DrawPolygon(const Vector* points, const Vector* normals, const Vector* colours, bool quad) {
    HostTables()->draw->DrawPolygon(this, points, normals, colours, quad);
}
