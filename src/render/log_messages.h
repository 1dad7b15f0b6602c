// SPDX-License-Identifier: MIT
#pragma once

#include "render/runtime/renderer.h"

/// Shows the errors among what the renderer has logged since the last call, each in a message box of the main
/// thread; the rest is dropped. True when there was an error.
bool showRendererErrors(Renderer& renderer);
