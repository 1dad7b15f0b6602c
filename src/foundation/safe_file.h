// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "foundation/types.h"

#include <cstdio>

namespace Quenza {

/// Writes a file whole or not at all: the bytes go to "<path>.partial" beside the target, every write and the
/// close are checked, and `commit` renames. What isn't committed is deleted by the destructor. Nothing here
/// throws but bad_alloc.
class SafeFile {
public:
    enum class Mode { TEXT, BINARY };

    SafeFile(const String& path, Mode mode);
    ~SafeFile();
    SafeFile(const SafeFile&) = delete;
    SafeFile& operator=(const SafeFile&) = delete;

    bool isOpen() const { return file_ != nullptr; }
    /// False once the open or a write has failed.
    bool good() const { return good_; }
    /// The system's text for the first failure.
    const String& failureReason() const { return failure_reason_; }
    const String& partialPath() const { return partial_path_; }

    /// Unbuffered: meant for large blocks. Does nothing once something has failed.
    void write(const void* data, u64 size);

    /// Closes the file and gives it its name; false when this or anything before it failed. The earlier file
    /// of that name is then still whole.
    bool commit();

    /// Leaves an uncommitted file on disk under its ".partial" name.
    void keepPartialFile() { keep_partial_ = true; }

private:
    void fail();
    void close();

    String path_;
    String partial_path_;
    String failure_reason_;
    std::FILE* file_ = nullptr;
    bool created_ = false;
    bool good_ = false;
    bool committed_ = false;
    bool keep_partial_ = false;
};

} // namespace Quenza
