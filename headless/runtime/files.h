// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

/// The host's file calls. Links are followed but for deletions, which take a link itself, never what it leads
/// to.
namespace headless::files {

/// True when the path is a folder (`isDirectory`), or a file.
bool exists(const Filename& path, bool isDirectory);

/// Makes the folder with those above it. True when it exists then.
bool createDirectory(const Filename& path);

/// Deletes a file or link, and with `recursive` a folder with all it holds. False when there is no such
/// thing, for the root of a file system, and when something was left.
bool kill(const Filename& path, bool recursive);

} // namespace headless::files
