// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"

namespace headless {

/// Puts the view's own camera where it sees all polygons of the document in a picture of 4:3 or narrower: in
/// front, a little above and to the left, focused on the middle. Without polygons it stays.
void frameView(Document& document);

} // namespace headless
