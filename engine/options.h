// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/types.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace engine {

/// The renderer's command line.
struct Options {
    /// The line as it was given, for the report.
    std::string commandLine;
    /// A scene (.qzs) or a render queue (.qzq).
    std::string input;
    /// Switches in the order given, each with its value.
    std::vector<std::pair<std::string, std::string>> switches;
    bool help = false;
};

/// The text for --help and for a bad command line.
std::string usage(const std::string& program);

/// False with `fault` told when a switch is unknown, lacks its value or has a bad one, or when there isn't
/// exactly one input.
bool parseOptions(const std::vector<std::string>& arguments, Options& options, std::string& fault);

/// The start of the random numbers: the integer that the text begins with, also a negative one.
std::optional<Quenza::u64> parseSeed(const std::string& text);

} // namespace engine
