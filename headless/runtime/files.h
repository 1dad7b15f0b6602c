// SPDX-License-Identifier: MIT
#pragma once

#include "host/filename.h"

#include <filesystem>
#include <string>
#include <vector>

/// The host's file calls. Links are followed but for deletions, which take a link itself, never what it leads
/// to.
namespace headless::files {

/// True for a name of the host's libraries, "preset://...".
bool isPreset(const Filename& name);

/// The file that a name of the host stands for. "preset://wood/oak.jpg" lies below the folder of presets,
/// which is QUENZA_HEADLESS_PRESETS of the environment, or "presets" beside the program; such a name with
/// ".." or a drive is empty.
std::filesystem::path pathOf(const Filename& name);

/// The three below take long paths, as the standard library on Windows doesn't. True for an ordinary file.
bool isFile(const std::filesystem::path& path);
/// Makes a folder with those above it where they are missing. The system's reason when it can't, else "".
std::string makeFolders(const std::filesystem::path& folder);
/// Deletes a file, a link, or a folder with all it holds. False when something was left.
bool removeTree(const std::filesystem::path& path);

/// True when the path is a folder (`isDirectory`), or a file.
bool exists(const Filename& path, bool isDirectory);

/// Makes the folder with those above it. True when it exists then.
bool createDirectory(const Filename& path);

/// Copies a file, whole or not at all. False when the source can't be read, and without `overwrite` when
/// there is a target.
bool copy(const Filename& source, const Filename& target, bool overwrite);

/// Appends the names in a folder, sorted by their bytes. False when it can't be read.
bool list(const Filename& folder, std::vector<Filename>& names);

/// Deletes a file or link, and with `recursive` a folder with all it holds. False when there is no such
/// thing, for the root of a file system, and when something was left.
bool kill(const Filename& path, bool recursive);

} // namespace headless::files
