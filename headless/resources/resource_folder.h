// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

#include "headless/resources/description.h"
#include "headless/resources/dialog_resource.h"
#include "headless/resources/string_table.h"

namespace headless::resources {

/// What a load gave: the thing, owned by the folder and valid as long as it, or null and the reason.
template <typename T>
struct Loaded {
    const T* value = nullptr;
    /// "file:line:column: what is wrong; what to do". Empty when the load succeeded.
    std::string error;

    explicit operator bool() const { return value != nullptr; }
    const T* operator->() const { return value; }
    const T& operator*() const { return *value; }
};

/// The folder res/ of a plug-in, read as the host reads it: each file when it is first asked for, and once.
/// Names of descriptions and icons are found whatever the case of their letters. Nothing throws; safe to call
/// from any thread.
class ResourceFolder {
public:
    explicit ResourceFolder(std::filesystem::path path) : path_(std::move(path)) {}

    /// The numbered texts of strings_us/c4d_strings.str.
    Loaded<StringTable> strings();

    /// One text; nothing when there is none of that number or `strings` fails.
    std::optional<std::string> loadString(int32_t number);

    /// The description of description/NAME.res with the labels of the English strings.
    Loaded<Description> loadDescription(std::string_view name);

    /// The dialog of a number, with the English texts.
    Loaded<DialogResource> loadDialog(int32_t number);

    /// Path of an icon by its registered name, such as "About.tif".
    std::optional<std::filesystem::path> findIcon(std::string_view name) const;

private:
    template <typename T>
    struct Cached {
        std::optional<T> value;
        std::string error;
        Loaded<T> get() const { return {value ? &*value : nullptr, error}; }
    };

    std::filesystem::path path_;
    std::mutex mutex_;
    std::optional<Cached<StringTable>> strings_;
    std::map<std::string, Cached<Description>> descriptions_;
    std::map<int32_t, Cached<DialogResource>> dialogs_;
};

} // namespace headless::resources
