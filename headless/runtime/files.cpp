// SPDX-License-Identifier: MIT
#include "headless/runtime/files.h"

#include "headless/runtime/platform.h"

#include <filesystem>

namespace headless::files {

namespace fs = std::filesystem;

bool exists(const Filename& path, bool isDirectory) {
    std::error_code error;
    const fs::file_status status = fs::status(platform::pathFromUtf8(path.GetUtf8()), error);
    return isDirectory ? fs::is_directory(status) : fs::exists(status) && !fs::is_directory(status);
}

bool createDirectory(const Filename& path) {
    if (!path.Content()) {
        return false;
    }
    const fs::path folder = platform::pathFromUtf8(path.GetUtf8());
    std::error_code error;
    fs::create_directories(folder, error);
    return fs::is_directory(folder, error);
}

bool kill(const Filename& path, bool recursive) {
    fs::path target = platform::pathFromUtf8(path.GetUtf8()).lexically_normal();
    if (!target.has_filename()) {
        // With a separator behind it a link would stand for what it leads to.
        target = target.parent_path();
    }
    if (target.empty() || target == target.root_path()) {
        return false;
    }
    std::error_code error;
    const fs::file_status status = fs::symlink_status(target, error);
    if (!fs::exists(status) || (fs::is_directory(status) && !recursive)) {
        return false;
    }
    fs::remove_all(target, error);
    return !error;
}

} // namespace headless::files
