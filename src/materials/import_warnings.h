// SPDX-License-Identifier: MIT
#pragma once

#include "host/string.h"

#include <vector>

/// What an import of materials could not take over, for the artist.
using ImportWarnings = std::vector<String>;

inline void addImportWarning(ImportWarnings& warnings, const String& what, const String& material) {
    warnings.push_back(what + " in Material \"" + material + "\" not supported.");
}
