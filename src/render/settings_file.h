// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

// "cquenzaSettings.cfg": an XML document with the element "global_settings", whose child "PATH" holds the
// renderer's install folder. Other top-level nodes belong to others and are kept.

/// False when the file is missing, doesn't parse, or lacks one of the two elements. A "PATH" without text is
/// an empty folder.
bool readSettings(const Filename& file, Filename& rendererDirectory);

/// Rewrites the file with this folder, or writes it back as it is with a null one. True when it was written.
bool writeSettings(const Filename& file, const Filename* rendererDirectory);
