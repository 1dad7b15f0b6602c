// SPDX-License-Identifier: MIT
#pragma once

#include "headless/runtime/host.h"

#include <string>

namespace headless {

/// The host's menus as trees, with what the plug-in added, and the Plugins menu, whose commands stand in the
/// order of registration. Commands tell whether they can be used on the open document.
std::string menuList(Host& host);

} // namespace headless
