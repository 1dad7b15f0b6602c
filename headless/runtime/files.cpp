// SPDX-License-Identifier: MIT
#include "headless/runtime/files.h"

#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "foundation/safe_file.h"
#include "headless/runtime/host.h"

#include <algorithm>
#include <fstream>

namespace headless::files {

namespace fs = std::filesystem;

namespace {

namespace system = Quenza::PlatformUtils;
using system::PathKind;

constexpr std::string_view PRESET = "preset://";

fs::path presetFolder() {
    const std::string folder = system::environment("QUENZA_HEADLESS_PRESETS").toStdString();
    return folder.empty() ? Host::current().startupPath() / "presets" : Quenza::nativePath(folder);
}

/// Empty for a name that would lead out of the presets.
fs::path presetPath(std::string name) {
    std::ranges::replace(name, '\\', '/');
    const fs::path inside = Quenza::nativePath(name);
    const bool leadsOut = inside.has_root_path() || name.find(':') != std::string::npos ||
                          std::ranges::find(inside, fs::path("..")) != inside.end();
    return leadsOut ? fs::path() : presetFolder() / inside;
}

PathKind kindOf(const fs::path& path) {
    return system::pathKind(Quenza::utf8Path(path));
}

} // namespace

bool isFile(const fs::path& path) {
    return kindOf(path) == PathKind::FILE && !system::isSpecialFile(Quenza::utf8Path(path));
}

std::string makeFolders(const fs::path& folder) {
    switch (kindOf(folder)) {
    case PathKind::DIRECTORY:
        return "";
    case PathKind::FILE:
        return std::make_error_code(std::errc::not_a_directory).message();
    case PathKind::MISSING:
        break;
    }
    const fs::path parent = folder.parent_path();
    if (!parent.empty() && parent != folder) {
        if (std::string reason = makeFolders(parent); !reason.empty()) {
            return reason;
        }
    }
    const bool isMade = system::makeDirectory(Quenza::utf8Path(folder));
    std::string reason = isMade ? "" : system::lastErrorText().toStdString();
    // Another program may have been faster.
    return isMade || kindOf(folder) == PathKind::DIRECTORY ? "" : reason;
}

bool removeTree(const fs::path& path) {
    const Quenza::String text = Quenza::utf8Path(path);
    if (system::isLink(text)) {
        // On Windows a link to a folder goes as a folder does.
        return system::removeFile(text) || system::removeDirectory(text);
    }
    if (system::pathKind(text) != PathKind::DIRECTORY) {
        return system::removeFile(text);
    }
    Quenza::Vector<Quenza::String> names;
    return system::listDirectory(text, names) &&
           std::ranges::all_of(names,
                               [&path](const Quenza::String& name) {
                                   return removeTree(path / Quenza::nativePath(name.view()));
                               }) &&
           system::removeDirectory(text);
}

bool isPreset(const Filename& name) {
    return name.GetUtf8().starts_with(PRESET);
}

fs::path pathOf(const Filename& name) {
    const std::string& text = name.GetUtf8();
    return isPreset(name) ? presetPath(text.substr(PRESET.size())) : Quenza::nativePath(text);
}

bool exists(const Filename& path, bool isDirectory) {
    return kindOf(pathOf(path)) == (isDirectory ? PathKind::DIRECTORY : PathKind::FILE);
}

bool createDirectory(const Filename& path) {
    return path.Content() && makeFolders(Quenza::nativePath(path.GetUtf8())).empty();
}

bool copy(const Filename& source, const Filename& target, bool overwrite) {
    const fs::path from = pathOf(source);
    const fs::path to = Quenza::nativePath(target.GetUtf8());
    std::error_code error;
    if (!isFile(from) || fs::equivalent(from, to, error) ||
        (!overwrite && (kindOf(to) != PathKind::MISSING || system::isLink(target.GetUtf8())))) {
        return false;
    }
    std::ifstream input(Quenza::systemPath(from), std::ios::binary);
    Quenza::SafeFile output(target.GetUtf8(), Quenza::SafeFile::Mode::BINARY);
    std::vector<char> block(1 << 20);
    while (input && output.good()) {
        input.read(block.data(), static_cast<std::streamsize>(block.size()));
        output.write(block.data(), static_cast<Quenza::u64>(input.gcount()));
    }
    return input.eof() && !input.bad() && output.commit();
}

bool list(const Filename& folder, std::vector<Filename>& names) {
    Quenza::Vector<Quenza::String> found;
    if (!system::listDirectory(Quenza::utf8Path(pathOf(folder)), found)) {
        return false;
    }
    for (const Quenza::String& name : found) {
        names.emplace_back(String(name.view()));
    }
    return true;
}

bool kill(const Filename& path, bool recursive) {
    fs::path target = Quenza::nativePath(path.GetUtf8()).lexically_normal();
    if (!target.has_filename()) {
        // With a separator behind it a link would stand for what it leads to.
        target = target.parent_path();
    }
    if (target.empty() || target == target.root_path()) {
        return false;
    }
    if (!system::isLink(Quenza::utf8Path(target))) {
        const PathKind kind = kindOf(target);
        if (kind == PathKind::MISSING || (kind == PathKind::DIRECTORY && !recursive)) {
            return false;
        }
    }
    return removeTree(target);
}

} // namespace headless::files
