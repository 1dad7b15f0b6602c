// SPDX-License-Identifier: MIT
#pragma once

#include "host/string.h"

/// "Quenza for Cinema 4D " and the version: in the start-up banner and in each scene's metadata.
inline String exporterVersionString() {
    return "Quenza for Cinema 4D 3.6.24";
}

inline constexpr const char* DEVELOPER_CREDIT = "The Quenza for Cinema 4D developers";

/// The line above and below the plug-in's output on the host's console.
inline constexpr const char* DECORATION = ".__.--._.-._.-.__.--._.-.__.--._.-._.-.__.--._.-.__.--._.-._.-.__."
                                          "--._.-.__.--._.-._.-.__.--._.-.__.--._.-._.-."
                                          "__.--._.-.__.--.";
