// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/safe_file.h"

#include <string>
#include <string_view>

namespace scene_tool {

/// Throws std::runtime_error when something stands at `path` that must not be replaced: a folder, a device.
void requireFileTarget(const std::string& path);

/// A file that is written in small pieces and appears whole or not at all. Failures throw
/// std::runtime_error.
class OutputFile {
public:
    explicit OutputFile(const std::string& path);

    void write(std::string_view bytes) {
        buffer_ += bytes;
        if (buffer_.size() >= FLUSH_AT)
            flush();
    }
    /// Gives the file its name.
    void commit();

private:
    static constexpr std::size_t FLUSH_AT = 1 << 20;

    void flush();
    [[noreturn]] void fail() const;

    std::string path_;
    Quenza::SafeFile file_;
    std::string buffer_;
};

} // namespace scene_tool
