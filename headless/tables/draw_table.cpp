// SPDX-License-Identifier: MIT
#include "headless/tables/tables.h"

#include <algorithm>
#include <cmath>

#include "headless/model/handles.h"

namespace headless {

namespace {

void record(BaseDraw* view, std::vector<Vector> points, bool inPixels, const Vector& colour) {
    View& target = *fromHost(view);
    if (!inPixels) {
        for (Vector& point : points) {
            point = target.penMatrix * point;
        }
    }
    target.drawn.push_back({std::move(points), inPixels, colour, target.penTransparency});
}

BaseObject* getSceneCamera(const BaseDraw* view, const BaseDocument* document) {
    return toHost(fromHost(view)->sceneCamera(document ? fromHost(document) : nullptr));
}

/// The largest frame of the image's proportions that fits in the middle of the view.
void getSafeFrame(const BaseDraw* view, int32_t* left, int32_t* top, int32_t* right, int32_t* bottom) {
    const View& shown = *fromHost(view);
    const Document* const document = activeDocument();
    const RenderDataNode* const render = document ? document->activeRenderData() : nullptr;
    const double imageWidth = render ? render->data.GetLong(RDATA_XRES, shown.width) : shown.width;
    const double imageHeight = render ? render->data.GetLong(RDATA_YRES, shown.height) : shown.height;
    const double scale =
        std::min(shown.width / std::max(imageWidth, 1.0), shown.height / std::max(imageHeight, 1.0));
    const auto width = static_cast<int32_t>(std::lround(imageWidth * scale));
    const auto height = static_cast<int32_t>(std::lround(imageHeight * scale));
    *left = (shown.width - width) / 2;
    *top = (shown.height - height) / 2;
    *right = *left + width - 1;
    *bottom = *top + height - 1;
}

void setMatrix(BaseDraw* view, const Matrix& matrix) {
    fromHost(view)->penMatrix = matrix;
}

void setPen(BaseDraw* view, const Vector& colour) {
    fromHost(view)->penColour = colour;
}

void setTransparency(BaseDraw* view, int32_t transparency) {
    fromHost(view)->penTransparency = transparency;
}

void drawPoint(BaseDraw* view, const Vector& point) {
    record(view, {point}, false, fromHost(view)->penColour);
}

void drawLine(BaseDraw* view, const Vector& from, const Vector& to) {
    record(view, {from, to}, false, fromHost(view)->penColour);
}

void drawLine2D(BaseDraw* view, const Vector& from, const Vector& to) {
    record(view, {from, to}, true, fromHost(view)->penColour);
}

void drawPolygon(BaseDraw* view, const Vector* points, const Vector* /*normals*/, const Vector* colours,
                 bool quad) {
    const Vector colour = colours ? colours[0] : fromHost(view)->penColour;
    record(view, std::vector<Vector>(points, points + (quad ? 4 : 3)), false, colour);
}

} // namespace

const DrawTable* drawTable() {
    static constexpr DrawTable table = {
        .GetSceneCamera = getSceneCamera,
        .GetSafeFrame = getSafeFrame,
        .SetMatrix = setMatrix,
        .SetPen = setPen,
        .SetTransparency = setTransparency,
        .DrawPoint = drawPoint,
        .DrawLine = drawLine,
        .DrawLine2D = drawLine2D,
        .DrawPolygon = drawPolygon,
    };
    return &table;
}

} // namespace headless
