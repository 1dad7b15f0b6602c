// SPDX-License-Identifier: MIT
#pragma once

#include "host/baselink.h"
#include "host/vector.h"

#include <memory>
#include <vector>

namespace headless {

class Document;
class Object;

/// Something that a plug-in drew into a view.
struct DrawnShape {
    /// One point, two of a line, three or four of a polygon; in world space, or in pixels of the view.
    std::vector<Vector> points;
    bool inPixels = false;
    Vector colour;
    /// As BaseDraw::SetTransparency has it.
    int32_t transparency = 0;
};

/// A view of the document, with the pen that draws into it. What is drawn is recorded.
class View {
public:
    View();
    ~View();

    /// The view's own camera, which no document's list holds.
    Object& editorCamera() const { return *editorCamera_; }
    /// The camera that the artist chose for the view, or null.
    void setSceneCamera(Object* camera);
    Object* chosenCamera() const;
    /// The chosen camera when it is alive and of `document`, else the view's own.
    Object* sceneCamera(const Document* document) const;

    /// Size of the view in pixels.
    int32_t width = 800;
    int32_t height = 600;

    // The pen.
    Matrix penMatrix;
    Vector penColour{1.0f, 1.0f, 1.0f};
    int32_t penTransparency = 0;
    std::vector<DrawnShape> drawn;

private:
    std::unique_ptr<Object> editorCamera_;
    BaseLink sceneCamera_;
};

} // namespace headless
