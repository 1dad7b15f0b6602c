// SPDX-License-Identifier: MIT
#pragma once

#include "tools/quenza-scene/command_line.h"

namespace scene_tool {

Command infoCommand();
Command checkCommand();
Command convertCommand();
Command packCommand();
Command diffCommand();
Command mergeCommand();

} // namespace scene_tool
