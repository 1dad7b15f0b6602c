// SPDX-License-Identifier: MIT
#pragma once

#include "headless/app/picture_action.h"
#include "headless/runtime/host.h"

namespace headless {

/// Does what an action on tone mapping, white point or layers says, as an artist would: in the plug-in's tone
/// mapping dialog, which is opened when it isn't open yet. Main thread. Throws HostError when the dialog
/// doesn't take it.
void actInTonemappingDialog(Host& host, const PictureAction& action);

} // namespace headless
