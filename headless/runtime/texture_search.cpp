// SPDX-License-Identifier: MIT
#include "headless/runtime/texture_search.h"

#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "foundation/string_utils.h"
#include "headless/runtime/files.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace headless {

namespace {

namespace fs = std::filesystem;

#ifdef _WIN32
constexpr char LIST_SEPARATOR = ';';
#else
constexpr char LIST_SEPARATOR = ':';
#endif

/// The entry of a folder whose name differs from `name` in case alone; the first by its bytes.
std::optional<fs::path> entryIgnoringCase(const fs::path& folder, const fs::path& name) {
    const std::string wanted = Quenza::toLowerCase(Quenza::utf8Path(name));
    Quenza::Vector<Quenza::String> names;
    Quenza::PlatformUtils::listDirectory(Quenza::utf8Path(folder), names);
    for (const Quenza::String& candidate : names) {
        if (Quenza::toLowerCase(candidate.view()) == wanted) {
            return Quenza::nativePath(candidate.view());
        }
    }
    return std::nullopt;
}

bool isThere(const fs::path& path) {
    using Quenza::PlatformUtils::PathKind;
    return Quenza::PlatformUtils::pathKind(Quenza::utf8Path(path)) != PathKind::MISSING;
}

std::optional<fs::path> fileOnDisk(const fs::path& folder, const fs::path& relative) {
    if (files::isFile(folder / relative)) {
        return folder / relative;
    }
    fs::path place = folder;
    for (const fs::path& part : relative) {
        if (isThere(place / part)) {
            place /= part;
            continue;
        }
        const std::optional<fs::path> entry = entryIgnoringCase(place, part);
        if (!entry) {
            return std::nullopt;
        }
        place /= *entry;
    }
    return files::isFile(place) ? std::optional(place) : std::nullopt;
}

std::vector<fs::path> placesOf(const Filename& documentPath, const Filename& extra) {
    std::vector<fs::path> places;
    if (extra.Content()) {
        places.push_back(files::pathOf(extra));
    }
    if (documentPath.Content()) {
        const fs::path folder = files::pathOf(documentPath);
        places.push_back(folder);
        places.push_back(folder / "tex");
    }
    const std::string list = Quenza::PlatformUtils::environment("QUENZA_HEADLESS_TEXTURES").toStdString();
    for (size_t start = 0; start < list.size();) {
        const size_t end = std::min(list.find(LIST_SEPARATOR, start), list.size());
        if (end > start) {
            places.push_back(Quenza::nativePath(list.substr(start, end - start)));
        }
        start = end + 1;
    }
    return places;
}

/// The forms in which a name is looked for below a place.
std::vector<fs::path> formsOf(std::string name) {
    // A document may come from a platform with other separators.
    std::ranges::replace(name, '\\', '/');
    const bool isFull = name.starts_with('/') || (name.size() > 1 && name[1] == ':');
    const fs::path whole = Quenza::nativePath(name);
    std::vector<fs::path> forms;
    if (!isFull && whole.has_parent_path()) {
        forms.push_back(whole);
    }
    if (whole.has_filename()) {
        forms.push_back(whole.filename());
    }
    return forms;
}

} // namespace

bool findTexture(const Filename& documentPath, const Filename& name, const Filename& extra, Filename* found) {
    if (!name.Content()) {
        return false;
    }
    const fs::path asItStands = files::pathOf(name);
    if (files::isPreset(name)) {
        const bool isPresetThere = files::isFile(asItStands);
        if (isPresetThere) {
            *found = Filename();
        }
        return isPresetThere;
    }
    if (asItStands.is_absolute() && files::isFile(asItStands)) {
        *found = name;
        return true;
    }
    const std::vector<fs::path> forms = formsOf(name.GetUtf8());
    for (const fs::path& place : placesOf(documentPath, extra)) {
        for (const fs::path& form : forms) {
            if (const std::optional<fs::path> file = fileOnDisk(place, form)) {
                *found = Filename(String(Quenza::utf8Path(*file)));
                return true;
            }
        }
    }
    return false;
}

} // namespace headless
