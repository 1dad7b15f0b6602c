// SPDX-License-Identifier: MIT
#pragma once

#include "headless/app/arguments.h"

namespace headless {

/// What quenza-headless takes.
const ProgramSpec& commandLine();

} // namespace headless
