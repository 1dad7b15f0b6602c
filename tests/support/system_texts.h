// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/platform.h"

#include <string>

namespace Quenza {

/// The system's own words for what went wrong with a file.
inline std::string noSuchFolder() {
#ifdef _WIN32
    return PlatformUtils::errorText(3).toStdString();
#else
    return "No such file or directory";
#endif
}

inline std::string noSuchFile() {
#ifdef _WIN32
    return PlatformUtils::errorText(2).toStdString();
#else
    return "No such file or directory";
#endif
}

/// Of a folder that was taken for a file.
inline std::string isFolder() {
#ifdef _WIN32
    return PlatformUtils::errorText(5).toStdString();
#else
    return "Is a directory";
#endif
}

} // namespace Quenza
