// SPDX-License-Identifier: MIT
#pragma once

#include "host/tables.h"

namespace headless {

// The part of the dialogs' table that is about user areas.
bool attachUserArea(GeDialog* dialog, GeUserArea* area, int32_t gadgetId);
void detachUserArea(GeUserArea* area);
int32_t getAreaWidth(const GeUserArea* area);
int32_t getAreaHeight(const GeUserArea* area);
void setAreaTimer(GeUserArea* area, int32_t milliseconds);
void redrawArea(GeUserArea* area);
void setAreaPen(GeUserArea* area, const Vector& colour);
void drawAreaRectangle(GeUserArea* area, int32_t x1, int32_t y1, int32_t x2, int32_t y2);
void drawAreaBitmap(GeUserArea* area, BaseBitmap* bitmap, int32_t wx, int32_t wy, int32_t x, int32_t y,
                    int32_t width, int32_t height);

} // namespace headless
