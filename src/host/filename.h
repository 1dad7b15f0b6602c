// SPDX-License-Identifier: MIT
#pragma once

#include "host/string.h"

/// A path of the platform: a directory part and a file part, split at the last separator.
/// The separator is '/' and on Windows also, and mainly, a backslash.
class Filename {
public:
#ifdef _WIN32
    static constexpr char separator = '\\';
#else
    static constexpr char separator = '/';
#endif

    Filename() = default;
    Filename(const char* path) : path_(path ? path : "") {}
    Filename(const String& path) : path_(path.GetUtf8()) {}

    bool Content() const {
        return !path_.empty();
    }
    String GetString() const {
        return String(path_);
    }
    const std::string& GetUtf8() const {
        return path_;
    }

    /// The part before the last separator, without it ("/" or "C:\" for a file of the root folder).
    Filename GetDirectory() const;
    /// The part behind the last separator.
    Filename GetFile() const;
    /// The part behind the file's last dot, empty without one.
    String GetSuffix() const;
    void SetDirectory(const Filename& directory);
    void SetFile(const Filename& file);
    /// Replaces the suffix, or adds one; given without the dot.
    void SetSuffix(const String& suffix);
    void ClearSuffix();
    bool CheckSuffix(const String& suffix) const;

    /// Joins a folder and a relative path.
    friend Filename operator+(const Filename& directory, const Filename& path);
    bool operator==(const Filename&) const = default;

    /// Asks the artist for a file or folder; false when cancelled. Main thread only.
    bool FileSelect(int32_t mode, const String& title);

private:
    size_t FileStart() const;
    size_t SuffixDot() const;

    std::string path_;
};

enum FileSelectMode : int32_t {
    FILESELECT_LOAD = 0,
    FILESELECT_SAVE = 1,
    FILESELECT_DIRECTORY = 2,
};
