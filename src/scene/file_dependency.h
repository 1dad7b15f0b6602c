// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/ref_counted.h"
#include "foundation/string.h"
#include "scene/scene_visitor.h"

namespace Quenza {

/// Reports the path in the collecting mode and replaces it in the updating mode. An empty path is no file.
/// Throws QuenzaException when a replacement is missing.
void visitFileDependency(SceneVisitor& visitor, String& path);

/// False when this walk has been at `object` before and must not change it again: a path or a UID that is
/// replaced twice is wrong. Modes that may repeat always get true.
bool firstVisit(SceneVisitor& visitor, const RefCounted& object);

} // namespace Quenza
