// SPDX-License-Identifier: MIT
#pragma once

#ifdef _WIN32

#include <string>

namespace Quenza {

/// Whether a library of this name is in the process.
bool isLoaded(const std::string& library);

} // namespace Quenza

#endif
