// SPDX-License-Identifier: MIT
#include "headless/resources/resource_folder.h"

#include <algorithm>
#include <exception>

#include "headless/resources/description_loader.h"
#include "headless/resources/dialog_loader.h"
#include "headless/resources/file_lookup.h"

namespace headless::resources {

namespace fs = std::filesystem;

namespace {

StringTable readStrings(const fs::path& root) {
    const auto read = [](const fs::path& folder, const char* name) {
        const fs::path file = findFile(folder, name).value_or(folder / name);
        return std::pair(readTextFile(file), file.generic_string());
    };
    const auto [header, headerName] = read(root, "c4d_symbols.h");
    const auto [texts, textsName] = read(root / "strings_us", "c4d_strings.str");
    SymbolTable symbols;
    symbols.readHeader(header, headerName);
    StringTable table;
    table.read(texts, textsName, symbols);
    return table;
}

/// One key for all spellings of a name that find the same files.
std::string cacheKey(std::string_view name) {
    std::string key(name);
    std::transform(key.begin(), key.end(), key.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return key;
}

} // namespace

Loaded<StringTable> ResourceFolder::strings() {
    const std::lock_guard lock(mutex_);
    if (!strings_) {
        strings_.emplace();
        try {
            strings_->value = readStrings(path_);
        } catch (const std::exception& fault) {
            strings_->error = fault.what();
        }
    }
    return strings_->get();
}

std::optional<std::string> ResourceFolder::loadString(int32_t number) {
    const Loaded<StringTable> table = strings();
    const std::string* text = table ? table->find(number) : nullptr;
    return text != nullptr ? std::optional(*text) : std::nullopt;
}

Loaded<Description> ResourceFolder::loadDescription(std::string_view name) {
    const std::lock_guard lock(mutex_);
    const auto [cached, isNew] = descriptions_.try_emplace(cacheKey(name));
    if (isNew) {
        try {
            cached->second.value = DescriptionLoader(path_).load(std::string(name));
        } catch (const std::exception& fault) {
            cached->second.error = fault.what();
        }
    }
    return cached->second.get();
}

Loaded<DialogResource> ResourceFolder::loadDialog(int32_t number) {
    const std::lock_guard lock(mutex_);
    const auto [cached, isNew] = dialogs_.try_emplace(number);
    if (isNew) {
        try {
            cached->second.value = DialogLoader(path_).load(number);
        } catch (const std::exception& fault) {
            cached->second.error = fault.what();
        }
    }
    return cached->second.get();
}

std::optional<fs::path> ResourceFolder::findIcon(std::string_view name) const {
    return findFile(path_, name);
}

} // namespace headless::resources
