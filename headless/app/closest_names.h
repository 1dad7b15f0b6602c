// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace headless {

/// Up to three of `known` that `word` may have meant: those that hold it, then those a few letters away.
/// Letters of either case are the same.
std::vector<std::string> closestNames(std::string_view word, const std::vector<std::string>& known);

/// "; is A, B or C meant?", or "" when nothing is close.
std::string suggestion(std::string_view word, const std::vector<std::string>& known);

} // namespace headless
