// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace Quenza {

/// What one run of a program gave; the status is -1 when it could not start, which the errors tell, or was
/// ended by a signal.
struct Outcome {
    int status = -1;
    std::string out;
    std::string errors;
};

/// Runs a program, given by its full path without the system's suffix, in a folder (default: the current
/// one) with the arguments in UTF-8, and waits. Safe from any thread.
Outcome runProgram(const std::string& program, const std::vector<std::string>& words,
                   const std::filesystem::path& folder = {});

} // namespace Quenza
