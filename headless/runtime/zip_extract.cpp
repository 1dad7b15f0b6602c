// SPDX-License-Identifier: MIT
#include "headless/runtime/zip_extract.h"

#include "foundation/native_path.h"
#include "foundation/platform.h"
#include "foundation/string_utils.h"
#include "foundation/utf8.h"
#include "headless/runtime/files.h"

#include <algorithm>
#include <fstream>
#include <minizip/unzip.h>
#include <new>
#include <set>
#include <stdexcept>
#include <vector>

#ifdef _WIN32
#include <minizip/iowin32.h>
#endif

namespace headless {

namespace {

namespace fs = std::filesystem;
namespace system = Quenza::PlatformUtils;
using system::PathKind;

/// Why an archive isn't unpacked.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

[[noreturn]] void refuse(const std::string& entry, const std::string& fault) {
    throw Refusal("the entry \"" + entry + "\" " + fault);
}

void makeFolders(const fs::path& folder) {
    if (const std::string reason = files::makeFolders(folder); !reason.empty()) {
        throw Refusal("it can't be unpacked: " + reason);
    }
}

struct Entry {
    std::string name;
    fs::path path;
    bool isFolder = false;
    uint64_t byteCount = 0;
    unz64_file_pos place{};
};

/// Folder that goes, with what is in it, at the end.
class TemporaryFolder {
public:
    explicit TemporaryFolder(fs::path path) : path_(std::move(path)) {
        if (!system::makeDirectory(Quenza::utf8Path(path_))) {
            throw Refusal("its folder can't be written to");
        }
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { files::removeTree(path_); }
    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

unzFile openArchive(const fs::path& file) {
#ifdef _WIN32
    zlib_filefunc64_def functions;
    fill_win32_filefunc64W(&functions);
    return unzOpen2_64(Quenza::systemPath(file).c_str(), &functions);
#else
    return unzOpen64(file.c_str());
#endif
}

uint64_t byteCountOf(const fs::path& file) {
    std::ifstream stream(Quenza::systemPath(file), std::ios::binary | std::ios::ate);
    const std::streamoff end = stream.tellg();
    return end < 0 ? 0 : static_cast<uint64_t>(end);
}

class Archive {
public:
    explicit Archive(const fs::path& file) {
        // A pipe would wait for its other end.
        if (!files::isFile(file)) {
            throw Refusal("there is no such file");
        }
        byteCount_ = byteCountOf(file);
        handle_ = openArchive(file);
        if (!handle_) {
            throw Refusal("it is no zip archive");
        }
    }
    Archive(const Archive&) = delete;
    Archive& operator=(const Archive&) = delete;
    ~Archive() { unzClose(handle_); }

    /// The entries, all of which are allowed.
    std::vector<Entry> entries();
    void unpack(const Entry& entry, const fs::path& target);

private:
    Entry currentEntry();

    uint64_t byteCount_ = 0;
    unzFile handle_ = nullptr;
};

#ifdef _WIN32
/// True for a name that stands for a device in every folder, such as "nul" or "Aux.png", and for one with
/// characters that no name has.
bool isReserved(std::string_view part) {
    if (part.find_first_of("<>\"|?*") != std::string_view::npos) {
        return true;
    }
    std::string stem = Quenza::toLowerCase(part.substr(0, part.find('.')));
    stem.erase(stem.find_last_not_of(' ') + 1);
    for (const char* const device : {"con", "prn", "aux", "nul", "conin$", "conout$"}) {
        if (stem == device) {
            return true;
        }
    }
    const bool isPort = stem.starts_with("com") || stem.starts_with("lpt");
    const std::string number = stem.substr(std::min<size_t>(stem.size(), 3));
    const bool isDigit = number.size() == 1 && number >= "0" && number <= "9";
    // The raised 1, 2 and 3 count as well.
    return isPort && (isDigit || number == "\xc2\xb9" || number == "\xc2\xb2" || number == "\xc2\xb3");
}
#endif

/// The path that an entry's name stands for, below the folder. Throws Refusal.
fs::path safePath(const std::string& name) {
    if (Quenza::findInvalidUTF8(name) != std::string_view::npos ||
        std::ranges::any_of(name, [](char c) { return (c >= 0 && c < ' ') || c == '\x7f'; })) {
        throw Refusal("the name of an entry isn't readable text");
    }
    if (name.find(':') != std::string::npos) {
        refuse(name, "names a drive");
    }
    std::string slashed = name;
    std::ranges::replace(slashed, '\\', '/');
    if (slashed.empty() || slashed.front() == '/') {
        refuse(name, "has a full path");
    }
    if (slashed.back() == '/') {
        slashed.pop_back();
    }
    fs::path path;
    size_t depth = 0;
    for (size_t start = 0; start <= slashed.size();) {
        const size_t end = std::min(slashed.find('/', start), slashed.size());
        const std::string part = slashed.substr(start, end - start);
        // Windows doesn't see dots and blanks at the end, so that ".. " would be "..".
        if (part.empty() || part.back() == '.' || part.back() == ' ') {
            refuse(name, "leads out of its folder");
        }
#ifdef _WIN32
        if (isReserved(part)) {
            refuse(name, "has a name that Windows doesn't take");
        }
#endif
        if (++depth > zip_limits::DEPTH + 1) {
            refuse(name, "lies too deep");
        }
        path /= Quenza::nativePath(part);
        start = end + 1;
    }
    return path;
}

/// False for links, devices and the like.
bool isPlain(const unz_file_info64& info) {
    constexpr uLong MADE_ON_UNIX = 3;
    constexpr uLong TYPE_MASK = 0170000;
    constexpr uLong TYPE_FILE = 0100000;
    constexpr uLong TYPE_FOLDER = 0040000;
    const uLong type = (info.external_fa >> 16) & TYPE_MASK;
    const bool hasType = (info.version >> 8) == MADE_ON_UNIX || type != 0;
    return !hasType || type == 0 || type == TYPE_FILE || type == TYPE_FOLDER;
}

Entry Archive::currentEntry() {
    unz_file_info64 info{};
    Entry entry;
    if (unzGetCurrentFileInfo64(handle_, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK) {
        throw Refusal("its table of contents is broken");
    }
    entry.name.resize(info.size_filename);
    if (unzGetCurrentFileInfo64(handle_, &info, entry.name.data(), info.size_filename, nullptr, 0, nullptr,
                                0) != UNZ_OK ||
        unzGetFilePos64(handle_, &entry.place) != UNZ_OK) {
        throw Refusal("its table of contents is broken");
    }
    entry.path = safePath(entry.name);
    entry.isFolder = entry.name.back() == '/' || entry.name.back() == '\\';
    entry.byteCount = info.uncompressed_size;
    if (!isPlain(info)) {
        refuse(entry.name, "is a link");
    }
    if ((info.flag & 1) != 0) {
        refuse(entry.name, "is encrypted");
    }
    if (info.compression_method != 0 && info.compression_method != Z_DEFLATED) {
        refuse(entry.name, "is packed by an unknown method");
    }
    return entry;
}

std::vector<Entry> Archive::entries() {
    unz_global_info64 contents{};
    if (unzGetGlobalInfo64(handle_, &contents) != UNZ_OK) {
        throw Refusal("its table of contents is broken");
    }
    if (contents.number_entry == 0) {
        // So the reader takes an archive that is cut within its last record, too.
        throw Refusal("it is empty");
    }
    if (contents.number_entry > zip_limits::ENTRIES) {
        throw Refusal("it has more than " + std::to_string(zip_limits::ENTRIES) + " entries");
    }
    std::vector<Entry> entries;
    std::set<std::string> names;
    uint64_t total = 0;
    int state = unzGoToFirstFile(handle_);
    for (; state == UNZ_OK; state = unzGoToNextFile(handle_)) {
        Entry entry = currentEntry();
        if (entries.size() == zip_limits::ENTRIES) {
            throw Refusal("it has more than " + std::to_string(zip_limits::ENTRIES) + " entries");
        }
        if (!names.insert(Quenza::toLowerCase(entry.path.generic_string())).second) {
            refuse(entry.name, "stands twice");
        }
        if (entry.byteCount > zip_limits::BYTES - total) {
            throw Refusal("it would unpack to more than 4 GiB");
        }
        total += entry.byteCount;
        entries.push_back(std::move(entry));
    }
    if (state != UNZ_END_OF_LIST_OF_FILE) {
        throw Refusal("its table of contents is broken");
    }
    if (total / zip_limits::RATIO > byteCount_) {
        throw Refusal("it would unpack to more than " + std::to_string(zip_limits::RATIO) +
                      " times its size");
    }
    return entries;
}

void Archive::unpack(const Entry& entry, const fs::path& target) {
    if (unzGoToFilePos64(handle_, &entry.place) != UNZ_OK || unzOpenCurrentFile(handle_) != UNZ_OK) {
        refuse(entry.name, "is broken");
    }
    std::ofstream file(Quenza::systemPath(target), std::ios::binary);
    std::vector<char> block(1 << 18);
    uint64_t written = 0;
    int count = 0;
    // The reader stops at the size that the table of contents tells.
    while (file &&
           (count = unzReadCurrentFile(handle_, block.data(), static_cast<unsigned>(block.size()))) > 0) {
        file.write(block.data(), count);
        written += static_cast<uint64_t>(count);
    }
    file.close();
    const int closed = unzCloseCurrentFile(handle_);
    if (!file) {
        refuse(entry.name, "can't be written");
    }
    if (count < 0 || closed != UNZ_OK || written != entry.byteCount) {
        refuse(entry.name, "is broken");
    }
}

/// A name that neither the folder nor the archive has.
fs::path freshName(const fs::path& folder, const std::vector<Entry>& entries) {
    for (int number = 1;; ++number) {
        const fs::path name = ".unpacking-" + std::to_string(number);
        const bool isTaken =
            std::ranges::any_of(entries, [&name](const Entry& entry) { return *entry.path.begin() == name; });
        const Quenza::String path = Quenza::utf8Path(folder / name);
        if (!isTaken && system::pathKind(path) == PathKind::MISSING && !system::isLink(path)) {
            return folder / name;
        }
    }
}

/// Throws unless the entry can take its place: folders above it are real folders or missing.
void checkPlace(const Entry& entry, const fs::path& folder) {
    fs::path place = folder;
    for (const fs::path& part : entry.path) {
        place /= part;
        const PathKind kind = system::pathKind(Quenza::utf8Path(place));
        const bool wantsFolder = entry.isFolder || place != folder / entry.path;
        const bool fits =
            kind == PathKind::MISSING || (wantsFolder ? kind == PathKind::DIRECTORY : files::isFile(place));
        if (!fits || system::isLink(Quenza::utf8Path(place))) {
            refuse(entry.name, "meets something else in its folder");
        }
    }
}

void unpackAll(const fs::path& file, const fs::path& folder) {
    Archive archive(file);
    const std::vector<Entry> entries = archive.entries();
    for (const Entry& entry : entries) {
        checkPlace(entry, folder);
    }
    const TemporaryFolder unpacked(freshName(folder, entries));
    for (const Entry& entry : entries) {
        const fs::path target = unpacked.path() / entry.path;
        makeFolders(entry.isFolder ? target : target.parent_path());
        if (!entry.isFolder) {
            archive.unpack(entry, target);
        }
    }
    for (const Entry& entry : entries) {
        const fs::path target = folder / entry.path;
        makeFolders(entry.isFolder ? target : target.parent_path());
        if (!entry.isFolder &&
            !system::replaceFile(Quenza::utf8Path(unpacked.path() / entry.path), Quenza::utf8Path(target))) {
            throw Refusal("it can't be unpacked: " + system::lastErrorText().toStdString());
        }
    }
}

} // namespace

std::string extractZip(const fs::path& archive, const fs::path& folder) {
    try {
        if (system::pathKind(Quenza::utf8Path(folder)) != PathKind::DIRECTORY) {
            return "there is no folder " + Quenza::utf8Path(folder);
        }
        unpackAll(archive, folder);
    } catch (const Refusal& refusal) {
        return refusal.what();
    } catch (const std::bad_alloc&) {
        return "there isn't memory enough to unpack it";
    }
    return "";
}

} // namespace headless
