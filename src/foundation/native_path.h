// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace Quenza {

/// Between UTF-8 and the standard library's paths, which on Windows would take a plain string for text of the
/// system's code page.
inline std::filesystem::path nativePath(std::string_view utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

inline std::string utf8Path(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

/// A path for one call of the standard library, to be neither kept nor shown: Windows' limit of 260
/// characters is lifted.
#ifdef _WIN32
std::filesystem::path systemPath(const std::filesystem::path& path);
#else
inline std::filesystem::path systemPath(const std::filesystem::path& path) {
    return path;
}
#endif

/// With slashes on every system, as files hold it.
inline std::string genericUtf8Path(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

} // namespace Quenza
