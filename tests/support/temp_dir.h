// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "foundation/string.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace Quenza {

/// A new directory that goes with its content at the end of a test.
class TempDir {
public:
    TempDir() {
        static std::atomic<int> count = 0;
        const std::filesystem::path base = nativePath(PlatformUtils::getTempDirectory().view());
        do
            path_ = base / ("quenza_test_" + std::to_string(++count));
        while (!std::filesystem::create_directory(path_));
    }
    ~TempDir() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;

    String path() const { return utf8Path(path_); }
    /// Path of an entry, with the system's own separators.
    String operator/(const std::string& name) const {
        return utf8Path((path_ / nativePath(name)).make_preferred());
    }

private:
    std::filesystem::path path_;
};

/// A path with the system's own separators.
inline std::string nativeText(const std::string& path) {
    return utf8Path(nativePath(path).make_preferred());
}

/// With line feeds alone, where the system's text files end their lines otherwise.
inline std::string unixLines(std::string text) {
#ifdef _WIN32
    std::erase(text, '\r');
#endif
    return text;
}

inline std::string fileBytes(const String& path) {
    std::ifstream file(nativePath(path.view()), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

inline void writeBytes(const String& path, const std::string& bytes) {
    std::ofstream(nativePath(path.view()), std::ios::binary) << bytes;
}

inline bool exists(const String& path) {
    return std::filesystem::exists(nativePath(path.view()));
}

} // namespace Quenza
