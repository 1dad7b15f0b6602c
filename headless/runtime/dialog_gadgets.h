// SPDX-License-Identifier: MIT
#pragma once

#include "headless/resources/dialog_resource.h"
#include "headless/runtime/dialog_state.h"

namespace headless {

/// Adds the gadgets of a resource to the group of a layout that is open. False, with a part of them added,
/// when a number is taken.
bool addGadgets(DialogState& dialog, const resources::DialogResource& resource);

} // namespace headless
