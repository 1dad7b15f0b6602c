// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "support/loaded_library.h"

#include <windows.h>

namespace Quenza {

bool isLoaded(const std::string& library) {
    return GetModuleHandleA(library.c_str()) != nullptr;
}

} // namespace Quenza

#endif
