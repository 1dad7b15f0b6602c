// SPDX-License-Identifier: MIT
#pragma once

#include "headless/watch/watched_picture.h"

#include <string>

namespace headless {

/// The state as the page's script reads it: one object whose keys are the fields' names; the phase is a word.
std::string stateJson(const WatchedState& state);

} // namespace headless
