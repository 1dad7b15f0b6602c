// SPDX-License-Identifier: MIT
#include "headless/runtime/files.h"

#include "foundation/safe_file.h"
#include "headless/runtime/host.h"
#include "headless/runtime/platform.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace headless::files {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view PRESET = "preset://";

fs::path presetFolder() {
    const char* const folder = std::getenv("QUENZA_HEADLESS_PRESETS");
    return folder && *folder ? platform::pathFromUtf8(folder) : Host::current().startupPath() / "presets";
}

/// Empty for a name that would lead out of the presets.
fs::path presetPath(std::string name) {
    std::ranges::replace(name, '\\', '/');
    const fs::path inside = platform::pathFromUtf8(name);
    const bool leadsOut = inside.has_root_path() || name.find(':') != std::string::npos ||
                          std::ranges::find(inside, fs::path("..")) != inside.end();
    return leadsOut ? fs::path() : presetFolder() / inside;
}

} // namespace

bool isPreset(const Filename& name) {
    return name.GetUtf8().starts_with(PRESET);
}

fs::path pathOf(const Filename& name) {
    const std::string& text = name.GetUtf8();
    return isPreset(name) ? presetPath(text.substr(PRESET.size())) : platform::pathFromUtf8(text);
}

bool exists(const Filename& path, bool isDirectory) {
    std::error_code error;
    const fs::file_status status = fs::status(pathOf(path), error);
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

bool copy(const Filename& source, const Filename& target, bool overwrite) {
    const fs::path from = pathOf(source);
    const fs::path to = platform::pathFromUtf8(target.GetUtf8());
    std::error_code error;
    if (!fs::is_regular_file(from, error) || fs::equivalent(from, to, error) ||
        (!overwrite && fs::exists(fs::symlink_status(to, error)))) {
        return false;
    }
    std::ifstream input(from, std::ios::binary);
    Quenza::SafeFile output(target.GetUtf8(), Quenza::SafeFile::Mode::BINARY);
    std::vector<char> block(1 << 20);
    while (input && output.good()) {
        input.read(block.data(), static_cast<std::streamsize>(block.size()));
        output.write(block.data(), static_cast<Quenza::u64>(input.gcount()));
    }
    return input.eof() && !input.bad() && output.commit();
}

bool list(const Filename& folder, std::vector<Filename>& names) {
    std::error_code error;
    std::vector<std::string> found;
    for (fs::directory_iterator entry(pathOf(folder), error), end; !error && entry != end;
         entry.increment(error)) {
        found.push_back(platform::utf8FromPath(entry->path().filename()));
    }
    if (error) {
        return false;
    }
    std::ranges::sort(found);
    for (const std::string& name : found) {
        names.emplace_back(String(name));
    }
    return true;
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
