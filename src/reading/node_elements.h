// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

namespace Quenza {

/// Name of the element that nodes of a type are written as ("model2"); "scene" for the root.
const char* nodeElementName(u32 type);

/// True for the types of which a scene has at most one.
bool isSingleNodeType(u32 type);

} // namespace Quenza
