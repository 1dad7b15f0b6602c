// SPDX-License-Identifier: MIT
#pragma once

#include "ply_reader/layout.h"

#include <string_view>

namespace Quenza::Ply {

/// Goes through the values of a body and calls the callbacks that are set. What follows the last value is
/// ignored. Throws Error; a callback's stop is one.
void readBody(std::string_view body, Layout& layout);

} // namespace Quenza::Ply
