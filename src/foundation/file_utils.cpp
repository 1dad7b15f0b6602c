// SPDX-License-Identifier: MIT
#include "foundation/file_utils.h"

#include "foundation/platform.h"
#include "foundation/safe_file.h"
#include "foundation/string_utils.h"

#include <array>
#include <cstdio>
#include <memory>

namespace Quenza::FileUtils {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

constexpr u64 COPY_BLOCK = u64(1) << 20;

/// Index behind the last separator; 0 when there is none.
u64 filenameStart(const String& path) {
    u64 start = path.size();
    while (start > 0 && !PlatformUtils::isSeparator(path[start - 1]))
        --start;
    return start;
}

String part(const String& text, u64 from, u64 to) {
    return String(text.view().substr(from, to - from));
}

bool copyBytes(std::FILE* from, SafeFile& to) {
    const std::unique_ptr<char[]> block(new char[COPY_BLOCK]);
    while (const std::size_t got = std::fread(block.get(), 1, COPY_BLOCK, from))
        to.write(block.get(), got);
    return !std::ferror(from);
}

bool closeChecked(File file) {
    return std::fclose(file.release()) == 0;
}

/// The entry of `dir` that is `name`, or that differs from it in case alone; "" when there is none.
String findNameInDir(const String& dir, const String& name) {
    Vector<String> names;
    PlatformUtils::listDirectory(dir, names);
    String found;
    for (const String& candidate : names) {
        if (candidate == name)
            return candidate;
        if (found.empty() && toLowerCase(candidate.view()) == toLowerCase(name.view()))
            found = candidate;
    }
    return found;
}

u64 behindParts(const String& path, u64 from, int count) {
    for (; from < path.size() && count > 0; ++from)
        if (PlatformUtils::isSeparator(path[from]))
            --count;
    return from;
}

/// Index behind what no folder lists: the server and share of a Windows path, and the prefix of a long one.
u64 unlistedEnd(const String& path) {
    const bool named = PlatformUtils::SEPARATOR == '\\' && path.size() >= 2 &&
                       PlatformUtils::isSeparator(path[0]) && PlatformUtils::isSeparator(path[1]);
    if (!named)
        return 0;
    const bool prefixed =
        path.size() >= 4 && (path[2] == '?' || path[2] == '.') && PlatformUtils::isSeparator(path[3]);
    if (!prefixed)
        return behindParts(path, 2, 2);
    return toLowerCase(path.view().substr(4, 4)) == "unc\\" ? behindParts(path, 8, 2) : 4;
}

} // namespace

String join(const String& dir, const String& path) {
    if (dir.empty() || PlatformUtils::isAbsolutePath(path))
        return path;
    return dir + String(1, PlatformUtils::SEPARATOR) + path;
}

String getDirectory(const String& path) {
    const u64 start = filenameStart(path);
    return start == 0 ? String() : part(path, 0, start - 1);
}

String getFilename(const String& path) {
    return part(path, filenameStart(path), path.size());
}

String removeExtension(const String& path) {
    const u64 start = filenameStart(path);
    for (u64 i = path.size(); i > start; --i)
        if (path[i - 1] == '.')
            return part(path, 0, i - 1);
    return path;
}

bool fileExists(const String& path) {
    return PlatformUtils::pathKind(path) != PlatformUtils::PathKind::MISSING;
}

bool directoryExists(const String& path) {
    return PlatformUtils::pathKind(path) == PlatformUtils::PathKind::DIRECTORY;
}

void createDir(const String& path) {
    if (!PlatformUtils::makeDirectory(path))
        throw FileUtilsExcep("Failed to create directory '" + path + "'");
}

Vector<String> getFilesInDir(const String& path) {
    Vector<String> names;
    if (!PlatformUtils::listDirectory(path, names))
        throw FileUtilsExcep("Failed to open dir '" + path + "': " + PlatformUtils::lastErrorText());
    return names;
}

u64 getFileSize(const String& path) {
    const File file(PlatformUtils::openFile(path, "rb"));
    if (!file)
        throw FileUtilsExcep("CreateFile failed: " + PlatformUtils::lastErrorText());
    const i64 size = PlatformUtils::openFileSize(file.get());
    if (size < 0)
        throw FileUtilsExcep("GetFileSizeEx failed: " + PlatformUtils::lastErrorText());
    return u64(size);
}

void writeEntireFile(const String& path, const void* data, u64 size) {
    File file(PlatformUtils::openFile(path, "wb"));
    if (!file)
        throw FileUtilsExcep("Could not open '" + path + "' for writing.");
    const bool written = size == 0 || std::fwrite(data, 1, size, file.get()) == size;
    if (!closeChecked(std::move(file)) || !written)
        throw FileUtilsExcep("Write to '" + path + "' failed.");
}

void writeEntireFile(const String& path, const std::string& data) {
    writeEntireFile(path, data.data(), data.size());
}

void writeEntireFile(const String& path, const std::vector<unsigned char>& data) {
    writeEntireFile(path, data.data(), data.size());
}

std::string readEntireFile(const String& path) {
    const File file(PlatformUtils::openFile(path, "rb"));
    const i64 size = file ? PlatformUtils::openFileSize(file.get()) : -1;
    if (size < 0)
        throw FileUtilsExcep("could not open '" + path + "' for reading.");
    std::string data(std::size_t(size), '\0');
    data.resize(std::fread(data.data(), 1, data.size(), file.get()));
    // Files of the system's making, such as those below /proc, are longer than they say.
    std::array<char, 4096> more;
    while (const std::size_t got = std::fread(more.data(), 1, more.size(), file.get()))
        data.append(more.data(), got);
    if (std::ferror(file.get()))
        throw FileUtilsExcep("could not open '" + path + "' for reading.");
    return data;
}

void copyFile(const String& a, const String& b) {
    File from(PlatformUtils::openFile(a, "rb"));
    SafeFile to(b, SafeFile::Mode::BINARY);
    const bool copied = from && copyBytes(from.get(), to);
    from.reset(); // Windows replaces no open file, and the two may be one
    if (!copied || !to.commit())
        throw FileUtilsExcep("Failed to copy file '" + a + "' to '" + b + "'");
}

void moveFile(const String& a, const String& b) {
    if (PlatformUtils::replaceFile(a, b))
        return;
    try { // the two may lie on different volumes
        copyFile(a, b);
        deleteFile(a);
    } catch (const FileUtilsExcep&) {
        throw FileUtilsExcep("Failed to move file '" + a + "' to '" + b + "'");
    }
}

void deleteFile(const String& path) {
    if (!PlatformUtils::removeFile(path))
        throw FileUtilsExcep("Failed to delete file '" + path + "'");
}

void deleteDirectory(const String& path) {
    if (!PlatformUtils::removeDirectory(path))
        throw FileUtilsExcep("Failed to delete directory '" + path + "'");
}

String getActualOSPath(const String& path) {
    u64 start = unlistedEnd(path);
    String actual = part(path, 0, start);
    for (u64 i = start; i <= path.size(); ++i) {
        if (i < path.size() && !PlatformUtils::isSeparator(path[i]))
            continue;
        const String name = part(path, start, i);
        const bool drive = name.size() == 2 && name[1] == ':';
        if (name.empty() || name == "." || name == ".." || drive) {
            actual += name;
        } else {
            const String found = findNameInDir(actual.empty() ? String(".") : actual, name);
            if (found.empty())
                throw FileUtilsExcep("Could not find file '" + path + "'");
            actual += found;
        }
        if (i < path.size())
            actual += path[i];
        start = i + 1;
    }
    if (!fileExists(actual))
        throw FileUtilsExcep("Could not find file '" + path + "'");
    return actual;
}

} // namespace Quenza::FileUtils
