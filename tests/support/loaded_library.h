// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace Quenza {

/// Whether a library of this name is in the process. What a thread has still to destroy for a library keeps
/// it there. Windows ends such a library last, when the process's other threads are gone at whatever they
/// held, so that the process may stand still for ever. Elsewhere, where that can't be, always false.
bool isLoaded(const std::string& library);

} // namespace Quenza
