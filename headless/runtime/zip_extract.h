// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace headless {

/// What an archive may unpack to.
namespace zip_limits {

inline constexpr uint64_t ENTRIES = 10'000;
inline constexpr uint64_t BYTES = uint64_t{4} << 30;
/// Bytes unpacked for one of the archive.
inline constexpr uint64_t RATIO = 1000;
/// Folders above a file.
inline constexpr size_t DEPTH = 64;

} // namespace zip_limits

/// Unpacks a zip archive into an existing folder, all of it or nothing. Refused are archives beyond the
/// limits, encrypted ones, methods other than "stored" and "deflate", and entries that are links, stand twice
/// (case doesn't count), or whose names are full paths, hold "..", a drive or control characters, or lead
/// through a link in the folder. Files that are there already are replaced. Returns the fault, "" when there
/// was none.
std::string extractZip(const std::filesystem::path& archive, const std::filesystem::path& folder);

} // namespace headless
