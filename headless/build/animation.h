// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

namespace headless {

/// Moves an object, its tags and all below it to a time, which may lie between frames. Caches aren't built.
void animateObject(Object& object, const BaseTime& time);
/// Moves everything in the document to the document's time: objects, tags, materials, shaders, render setups
/// and the view's own camera.
void animateDocument(Document& document);

} // namespace headless
