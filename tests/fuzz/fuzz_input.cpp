// SPDX-License-Identifier: MIT
#include "fuzz/fuzz_input.h"

#include "foundation/file_utils.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace fuzz {

namespace {

class Folder {
public:
    Folder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "quenza-fuzz-XXXXXX").string();
        if (!mkdtemp(pattern.data())) {
            throw std::runtime_error("no temporary folder: " + pattern);
        }
        path = pattern;
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    std::filesystem::path path;
};

} // namespace

Quenza::String writeInput(const char* name, const uint8_t* data, size_t size) {
    static const Folder folder;
    const Quenza::String path((folder.path / name).string());
    Quenza::FileUtils::writeEntireFile(path, data, size);
    return path;
}

} // namespace fuzz
