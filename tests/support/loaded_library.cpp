// SPDX-License-Identifier: MIT
#include "support/loaded_library.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace Quenza {

bool isLoaded([[maybe_unused]] const std::string& library) {
#ifdef _WIN32
    return GetModuleHandleA(library.c_str()) != nullptr;
#else
    return false;
#endif
}

} // namespace Quenza
