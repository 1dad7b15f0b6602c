// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "host/bitmap.h"
#include "host/vector.h"

class GeDialog;

/// A part of a dialog that draws itself. Attached to a gadget by GeDialog::AttachUserArea, and must outlive
/// the dialog's window. Main thread.
class GeUserArea {
public:
    GeUserArea() = default;
    GeUserArea(const GeUserArea&) = delete;
    GeUserArea& operator=(const GeUserArea&) = delete;
    virtual ~GeUserArea();

    /// The window has opened; false closes it.
    virtual bool Init() { return true; }
    virtual bool GetMinSize(int32_t& /*width*/, int32_t& /*height*/) { return false; }
    virtual void Sized(int32_t /*width*/, int32_t /*height*/) {}
    /// Draws what lies between the corners, in pixels of the area.
    virtual void DrawMsg(int32_t /*x1*/, int32_t /*y1*/, int32_t /*x2*/, int32_t /*y2*/,
                         const BaseContainer& /*message*/) {}
    virtual void Timer(const BaseContainer& /*message*/) {}

    /// 0 while no window shows the area.
    int32_t GetWidth() const;
    int32_t GetHeight() const;
    /// Milliseconds between Timer calls; 0 stops them.
    void SetTimer(int32_t milliseconds);
    /// DrawMsg is to be called.
    void Redraw();

    // Within DrawMsg.
    void DrawSetPen(const Vector& colour);
    void DrawRectangle(int32_t x1, int32_t y1, int32_t x2, int32_t y2);
    /// The part (x, y, width, height) of the bitmap at (wx, wy), one to one.
    void DrawBitmap(BaseBitmap* bitmap, int32_t wx, int32_t wy, int32_t x, int32_t y, int32_t width,
                    int32_t height);
};
