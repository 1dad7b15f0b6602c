// SPDX-License-Identifier: MIT
#ifndef _WIN32

#include "foundation/platform.h"

#include "foundation/platform_memory.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <pwd.h>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace Quenza {

void* PlatformMemory::allocateLarge(std::size_t bytes, std::size_t alignment) {
    const std::size_t rounded = (bytes + alignment - 1) / alignment * alignment;
    if (rounded < bytes)
        return nullptr;
    void* block = std::aligned_alloc(alignment, rounded);
#ifdef MADV_HUGEPAGE
    if (block)
        madvise(block, rounded, MADV_HUGEPAGE); // only advice: a refusal costs speed, nothing else
#endif
    return block;
}

void PlatformMemory::freeLarge(void* block) noexcept {
    std::free(block);
}

namespace PlatformUtils {

namespace {

std::string homeDirectory() {
    std::string home = environment("HOME").toStdString();
    if (home.empty())
        if (const passwd* user = getpwuid(getuid()))
            home = user->pw_dir;
    return home;
}

std::string trimmed(const std::string& text) {
    const char* const blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos)
        return "";
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

} // namespace

bool isSeparator(char c) {
    return c == '/';
}

bool isAbsolutePath(const String& path) {
    return !path.empty() && path[0] == '/';
}

String readRegistryText(const String& key, const String& value) {
    std::ifstream file((getAppDataDirectory() + "/registry.ini").toStdString());
    const std::string wanted_section = "[" + key.toStdString() + "]";
    bool in_section = false;
    for (std::string line; std::getline(file, line);) {
        line = trimmed(line);
        if (!line.empty() && line.front() == '[') {
            in_section = line == wanted_section;
            continue;
        }
        const std::size_t equals = line.find('=');
        if (in_section && equals != std::string::npos && value == String(trimmed(line.substr(0, equals))))
            return trimmed(line.substr(equals + 1));
    }
    return "";
}

String environment(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

String getAppDataDirectory() {
    const String configured = environment("XDG_CONFIG_HOME");
    if (!configured.empty())
        return configured;
    return homeDirectory() + "/.config";
}

String getTempDirectory() {
    std::string directory = environment("TMPDIR").toStdString();
    while (directory.size() > 1 && directory.back() == '/')
        directory.pop_back();
    return directory.empty() ? "/tmp" : directory;
}

String errorText(int code) {
    return std::generic_category().message(code);
}

String lastErrorText() {
    return errorText(errno);
}

int lastErrorCode() {
    return errno;
}

void setLibraryDirectory(const String&) {}

void* loadLibrary(const String& path, String& error) {
    void* library = dlopen(path.toStdString().c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        const char* const reason = dlerror();
        error = reason ? reason : "The library can't be loaded.";
    }
    return library;
}

void* librarySymbol(void* library, const char* name) {
    return dlsym(library, name);
}

void freeLibrary(void* library) {
    dlclose(library);
}

void keepThisLibrary() {}

PathKind pathKind(const String& path) {
    struct stat status;
    if (stat(path.toStdString().c_str(), &status) != 0)
        return PathKind::MISSING;
    return S_ISDIR(status.st_mode) ? PathKind::DIRECTORY : PathKind::FILE;
}

bool makeDirectory(const String& path) {
    return mkdir(path.toStdString().c_str(), 0777) == 0;
}

bool isSpecialFile(const String& path) {
    struct stat status {};
    return stat(path.toStdString().c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

bool isLink(const String& path) {
    struct stat status {};
    return lstat(path.toStdString().c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool removeFile(const String& path) {
    return unlink(path.toStdString().c_str()) == 0;
}

bool removeDirectory(const String& path) {
    return rmdir(path.toStdString().c_str()) == 0;
}

bool replaceFile(const String& from, const String& to) {
    return std::rename(from.toStdString().c_str(), to.toStdString().c_str()) == 0;
}

bool listDirectory(const String& path, Vector<String>& names) {
    const auto close = [](DIR* directory) { closedir(directory); };
    const std::unique_ptr<DIR, decltype(close)> directory(opendir(path.toStdString().c_str()), close);
    if (!directory)
        return false;
    while (const dirent* entry = readdir(directory.get()))
        if (std::strcmp(entry->d_name, ".") != 0 && std::strcmp(entry->d_name, "..") != 0)
            names.push_back(String(entry->d_name));
    std::sort(names.begin(), names.end());
    return true;
}

bool fileTime(const String& path, i64& seconds) {
    struct stat status;
    if (stat(path.toStdString().c_str(), &status) != 0)
        return false;
    seconds = status.st_mtime;
    return true;
}

std::FILE* openFile(const String& path, const char* mode) {
    std::FILE* file = std::fopen(path.toStdString().c_str(), (std::string(mode) + "e").c_str());
    struct stat status;
    if (file && fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode)) {
        std::fclose(file);
        errno = EISDIR;
        return nullptr;
    }
    return file;
}

i64 openFileSize(std::FILE* file) {
    struct stat status;
    return fstat(fileno(file), &status) == 0 ? i64(status.st_size) : -1;
}

bool seekFile(std::FILE* file, i64 offset) {
    return fseeko(file, offset, SEEK_SET) == 0;
}

bool readFileAt(std::FILE* file, i64 offset, void* out, u64 size) {
    char* bytes = static_cast<char*>(out);
    while (size > 0) {
        const ssize_t got = pread(fileno(file), bytes, size, offset);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        bytes += got;
        offset += got;
        size -= u64(got);
    }
    return true;
}

bool mapFile(const String& path, std::string_view& bytes) {
    // Without O_NONBLOCK the opening of a pipe would wait for somebody to write to it.
    const int file = open(path.toStdString().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return false;
    struct stat status;
    const bool ordinary = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    const std::size_t size = ordinary ? std::size_t(status.st_size) : 0;
    // No file of no bytes can be mapped.
    void* const start = size > 0 ? mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0) : nullptr;
    close(file);
    if (!ordinary || start == MAP_FAILED)
        return false;
    if (start)
        madvise(start, size, MADV_SEQUENTIAL); // only advice
    bytes = std::string_view(static_cast<const char*>(start), size);
    return true;
}

void unmapFile(std::string_view bytes) noexcept {
    if (!bytes.empty())
        munmap(const_cast<char*>(bytes.data()), bytes.size());
}

} // namespace PlatformUtils

} // namespace Quenza

#endif
