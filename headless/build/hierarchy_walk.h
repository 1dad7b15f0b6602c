// SPDX-License-Identifier: MIT
#pragma once

#include "headless/model/document.h"
#include "host/object.h"

namespace headless {

/// Builds all caches of the document and calls the walk's Do for each of its objects, parents first, until a
/// call returns false. Each object has data of its own, made by Alloc, filled by CopyTo from its parent's (at
/// the top from `startData`, unless that is null) and given back to Free. False when `thread` was asked to
/// end before the walk was through.
bool runHierarchy(Hierarchy& walk, Document& document, void* startData, BaseThread* thread);

} // namespace headless
