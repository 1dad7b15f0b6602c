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
#include <vector>

namespace Quenza {

/// Removes a folder with what lies in it, as far as the system lets it, also when a program that still runs
/// takes entries away meanwhile: there GCC 12's remove_all tries the lost entry for ever on Windows.
inline void removeTree(const std::filesystem::path& folder) {
    namespace fs = std::filesystem;
    std::error_code ignored;
    std::vector<fs::directory_entry> entries;
    for (fs::directory_iterator entry(folder, ignored), end; entry != end; entry.increment(ignored))
        entries.push_back(*entry);
    for (const fs::directory_entry& entry : entries) {
        if (fs::is_directory(entry.symlink_status(ignored)))
            removeTree(entry);
        else
            fs::remove(entry, ignored);
    }
    fs::remove(folder, ignored);
}

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
    ~TempDir() { removeTree(path_); }
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
