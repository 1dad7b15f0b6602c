// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"

#include <string_view>

namespace Quenza {

/// A whole file, seen as memory; the system reads it page by page as it's looked at.
///
/// A file that another program shortens meanwhile loses the pages behind its new end: to look at these ends
/// the process. That is the price of not copying, and no worse than a program that damages its own files.
class MappedFile {
public:
    /// Throws FileUtilsExcep "could not open '" + path + "' for reading." for what is missing or no ordinary
    /// file.
    explicit MappedFile(const String& path);
    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::string_view bytes() const { return bytes_; }

private:
    std::string_view bytes_;
};

} // namespace Quenza
