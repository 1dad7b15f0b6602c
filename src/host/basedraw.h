// SPDX-License-Identifier: MIT
#pragma once

#include "host/vector.h"

class BaseDocument;
class BaseObject;

/// A view of the document, and the pen that draws into it. Opaque, the host's.
class BaseDraw {
public:
    BaseDraw() = delete;

    /// The camera that the view looks through: the scene camera that the artist chose, else the view's own.
    BaseObject* GetSceneCamera(const BaseDocument* document) const;
    /// Edges of the frame that a render would show, in pixels of the view.
    void GetSafeFrame(int32_t* left, int32_t* top, int32_t* right, int32_t* bottom) const;

    /// All that follows is drawn in the space of `matrix`.
    void SetMatrix(const Matrix& matrix);
    void SetPen(const Vector& colour);
    /// 0 opaque; negative values blend without writing depth, -255 is invisible.
    void SetTransparency(int32_t transparency);
    void DrawPoint(const Vector& point);
    void DrawLine(const Vector& from, const Vector& to);
    /// In pixels of the view.
    void DrawLine2D(const Vector& from, const Vector& to);
    /// Three or four points with a normal and a colour each.
    void DrawPolygon(const Vector* points, const Vector* normals, const Vector* colours, bool quad);
};

struct BaseDrawHelp {
    BaseDocument* document = nullptr;
    /// World matrix of the object that is drawn.
    Matrix matrix;
};
