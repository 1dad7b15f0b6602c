// SPDX-License-Identifier: MIT
#include "host/userarea.h"

#include "host/tables.h"

GeUserArea::~GeUserArea() {
    if (HostTables()) {
        HostTables()->dialog->DetachUserArea(this);
    }
}

int32_t GeUserArea::GetWidth() const {
    return HostTables()->dialog->GetAreaWidth(this);
}

int32_t GeUserArea::GetHeight() const {
    return HostTables()->dialog->GetAreaHeight(this);
}

void GeUserArea::SetTimer(int32_t milliseconds) {
    HostTables()->dialog->SetAreaTimer(this, milliseconds);
}

void GeUserArea::Redraw() {
    HostTables()->dialog->RedrawArea(this);
}

void GeUserArea::DrawSetPen(const Vector& colour) {
    HostTables()->dialog->SetAreaPen(this, colour);
}

void GeUserArea::DrawRectangle(int32_t x1, int32_t y1, int32_t x2, int32_t y2) {
    HostTables()->dialog->DrawAreaRectangle(this, x1, y1, x2, y2);
}

void GeUserArea::DrawBitmap(BaseBitmap* bitmap, int32_t wx, int32_t wy, int32_t x, int32_t y, int32_t width,
                            int32_t height) {
    HostTables()->dialog->DrawAreaBitmap(this, bitmap, wx, wy, x, y, width, height);
}
