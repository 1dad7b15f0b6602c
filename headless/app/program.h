// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

namespace headless {

/// The program quenza-headless: reads the words behind its name, does what they say, and gives the process's
/// exit status. Nothing is thrown.
int runProgram(std::span<const std::string> words);

} // namespace headless
