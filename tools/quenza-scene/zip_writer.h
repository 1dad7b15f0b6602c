// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace scene_tool {

/// Writes a zip archive. The same entries in the same order give the same bytes: all carry the date
/// 1980-01-01. Failures throw std::runtime_error; an archive that wasn't finished is worth nothing and is the
/// caller's to delete.
class ZipWriter {
public:
    explicit ZipWriter(const std::string& path);
    ~ZipWriter();
    ZipWriter(const ZipWriter&) = delete;
    ZipWriter& operator=(const ZipWriter&) = delete;

    /// Entry names are UTF-8, relative, with "/" between their parts.
    void addFile(const std::string& name, const std::string& source_path);
    /// Writes the directory of the archive and closes it.
    void finish();

private:
    void check(int result, const std::string& doing) const;

    std::string path_;
    void* zip_;
};

} // namespace scene_tool
