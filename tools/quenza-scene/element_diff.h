// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <string>
#include <unordered_map>
#include <vector>

namespace scene_tool {

/// From UIDs of the second text to those of the first.
using UIDMap = std::unordered_map<Quenza::u32, Quenza::u32>;

/// Compares two XML elements of a name, given as text: one line for each field that differs, with the way to
/// it; where a parent has several children of a name, they are numbered from 1. With a map, numbers in `uid`
/// and `..._uid` elements are compared by it, and what it doesn't hold differs from everything.
std::vector<std::string> diffElements(const std::string& a, const std::string& b, const UIDMap* uids);

} // namespace scene_tool
