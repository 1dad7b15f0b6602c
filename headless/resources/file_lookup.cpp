// SPDX-License-Identifier: MIT
#include "headless/resources/file_lookup.h"

#include <algorithm>
#include <fstream>

#include "headless/resources/resource_error.h"

namespace headless::resources {

namespace fs = std::filesystem;

namespace {

std::string utf8(const fs::path& path) {
    const std::u8string text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lower(x) == lower(y); });
}

std::optional<fs::path> findFile(const fs::path& folder, std::string_view name) {
    if (name.empty() || name == "." || name == ".." ||
        name.find_first_of(std::string_view("/\\:\0", 4)) != name.npos)
        return std::nullopt;
    std::error_code error;
    std::string best;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::string candidate = utf8(entry->path().filename());
        std::error_code typeError;
        if (!equalIgnoringCase(candidate, name) || !entry->is_regular_file(typeError))
            continue;
        if (candidate == name)
            return entry->path();
        if (best.empty() || candidate < best)
            best = candidate;
    }
    if (best.empty())
        return std::nullopt;
    return folder / fs::path(std::u8string(best.begin(), best.end()));
}

std::string readTextFile(const fs::path& file) {
    std::error_code error;
    const std::uintmax_t size = fs::file_size(file, error);
    if (error)
        throw ResourceError(utf8(file), "can't be read: " + error.message());
    if (size > maxFileBytes)
        throw ResourceError(utf8(file),
                            "is larger than 1 MiB, which no resource file is; check what it holds");
    std::ifstream stream(file, std::ios::binary);
    std::string text(static_cast<size_t>(size), '\0');
    if (!stream.read(text.data(), static_cast<std::streamsize>(text.size())))
        throw ResourceError(utf8(file), "can't be read; check that it is there and that you may read it");
    return text;
}

} // namespace headless::resources
