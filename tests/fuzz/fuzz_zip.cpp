// SPDX-License-Identifier: MIT
// Any bytes as a zip archive: it is unpacked into its folder, all of it or nothing, and nothing lies
// elsewhere.
#include "fuzz/fuzz_input.h"
#include "headless/runtime/zip_extract.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>

namespace fs = std::filesystem;

namespace {

/// Links and devices are no contents.
bool isPlain(const fs::path& folder) {
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (!fs::is_directory(entry.symlink_status()) && !fs::is_regular_file(entry.symlink_status())) {
            return false;
        }
    }
    return true;
}

size_t countEntries(const fs::path& folder) {
    return static_cast<size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const fs::path archive = fuzz::writeInput("archive.zip", data, size).toStdString();
    const fs::path folder = archive.parent_path() / "unpacked";
    fs::create_directory(folder);
    const bool isRefused = !headless::extractZip(archive, folder).empty();
    if (!isPlain(folder) || (isRefused && !fs::is_empty(folder)) ||
        countEntries(archive.parent_path()) != 2) {
        std::abort();
    }
    fs::remove_all(folder);
    return 0;
}
