// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace headless {

/// A loaded shared library, closed at the end.
class Library {
public:
    /// Throws HostError with the system's reason.
    explicit Library(const std::filesystem::path& file);
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library();

    /// Null when the library exports no such name.
    void* find(const char* name) const;

private:
    void* handle_;
};

} // namespace headless
