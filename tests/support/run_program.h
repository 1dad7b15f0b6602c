// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace Quenza {

/// What one run of a program gave; the status is -1 when it could not start or was ended by a signal.
struct Outcome {
    int status = -1;
    std::string out;
    std::string errors;
};

/// Runs a program of the build, given without the system's suffix, with the arguments in UTF-8, and waits.
Outcome runProgram(const std::string& program, const std::vector<std::string>& words);

} // namespace Quenza
