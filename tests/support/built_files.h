// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/platform.h"

#include <filesystem>
#include <stdexcept>
#include <string>

namespace Quenza {

/// The plug-in and those like it, as the platform calls them.
#ifdef _WIN32
inline constexpr const char* PLUGIN_PATH = QUENZA_BIN_DIR "/cquenza.cdl64";
inline constexpr const char* PLUGIN_NAME = "cquenza.cdl64";
inline constexpr const char* REALTIME_PLUGIN_NAME = "cquenza_realtime.dll";
#else
inline constexpr const char* PLUGIN_PATH = QUENZA_BIN_DIR "/cquenza.so";
inline constexpr const char* PLUGIN_NAME = "cquenza.so";
inline constexpr const char* REALTIME_PLUGIN_NAME = "cquenza_realtime.so";
#endif

/// Lets a file or a folder stand in a second place without a copy, as far as the platform knows such links.
inline void link(const std::filesystem::path& from, const std::filesystem::path& to) {
#ifdef _WIN32
    if (std::filesystem::is_directory(from)) {
        std::filesystem::copy(from, to, std::filesystem::copy_options::recursive);
    } else {
        std::filesystem::create_hard_link(from, to);
    }
#else
    std::filesystem::create_symlink(from, to);
#endif
}

/// A library in this process while it lives.
class LoadedLibrary {
public:
    explicit LoadedLibrary(const std::filesystem::path& file) {
        String error;
        handle_ = PlatformUtils::loadLibrary(file.string(), error);
        if (!handle_) {
            throw std::runtime_error(error.toStdString());
        }
    }
    ~LoadedLibrary() { PlatformUtils::freeLibrary(handle_); }
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;

    /// Null when there is no such procedure.
    template <class Procedure>
    Procedure find(const char* name) const {
        return reinterpret_cast<Procedure>(PlatformUtils::librarySymbol(handle_, name));
    }

private:
    void* handle_ = nullptr;
};

} // namespace Quenza
