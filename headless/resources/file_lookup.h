// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace headless::resources {

/// Finds a file of a folder by name, without regard to the case of ASCII letters: resources are written on
/// systems that don't tell "About.tif" from "about.tif". An exact match wins; of several others the first in
/// byte order does. Nothing when the name is empty or leads out of the folder, or when no regular file
/// matches.
std::optional<std::filesystem::path> findFile(const std::filesystem::path& folder, std::string_view name);

/// Reads a text file whole. Throws ResourceError when it can't be read or is larger than `maxFileBytes`.
std::string readTextFile(const std::filesystem::path& file);

inline constexpr std::uintmax_t maxFileBytes = 1u << 20;

/// True when both are the same but for the case of ASCII letters.
bool equalIgnoringCase(std::string_view a, std::string_view b);

} // namespace headless::resources
