// SPDX-License-Identifier: MIT
#pragma once

#include "host/basecontainer.h"
#include "scene/medium.h"

/// Writes a medium of the scene into the container of a material. A centre stays in the scene's metres. Null
/// is ignored.
void importMedium(BaseContainer& data, const Quenza::Medium* medium);
