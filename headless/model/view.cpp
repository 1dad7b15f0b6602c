// SPDX-License-Identifier: MIT
#include "headless/model/view.h"

#include "headless/model/handles.h"
#include "headless/model/node_types.h"

namespace headless {

View::View() : editorCamera_(createObject(Ocamera)) {
    editorCamera_->name = "Editor Camera";
    // From the front and a little above, at the distance from which the default cube is well seen.
    editorCamera_->matrix.off = {0.0f, 150.0f, -1000.0f};
}

View::~View() = default;

void View::setSceneCamera(Object* camera) {
    sceneCamera_.SetLink(toHost(camera));
}

Object* View::chosenCamera() const {
    return static_cast<Object*>(fromHost(sceneCamera_.GetLink()));
}

Object* View::sceneCamera(const Document* document) const {
    Object* const camera = chosenCamera();
    return camera && camera->document() && camera->document() == document ? camera : editorCamera_.get();
}

} // namespace headless
