// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace Quenza {

/// Makes a file that has no end and keeps whoever opens it waiting. False where there are no such files.
inline bool makePipe([[maybe_unused]] const String& path) {
#ifdef _WIN32
    return false;
#else
    return mkfifo(path.toStdString().c_str(), 0600) == 0;
#endif
}

} // namespace Quenza
