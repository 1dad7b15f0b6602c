// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "foundation/platform.h"

#include "foundation/platform_memory.h"
#include "foundation/platform_wide.h"

#include <algorithm>
#include <cstdint>
#include <cwchar>
#include <fcntl.h>
#include <io.h>
#include <malloc.h>
#include <string>
#include <string_view>

#include <windows.h>

namespace Quenza {

void* PlatformMemory::allocateLarge(std::size_t bytes, std::size_t alignment) {
    return _aligned_malloc(bytes, alignment);
}

void PlatformMemory::freeLarge(void* block) noexcept {
    _aligned_free(block);
}

namespace PlatformUtils {

namespace {

constexpr i64 FILETIME_TICKS_PER_SECOND = 10000000;
constexpr i64 FILETIME_OF_1970 = 116444736000000000;
/// Others may do with an open file what they may do elsewhere.
constexpr DWORD SHARE_ALL = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

constexpr int REPLACE_ATTEMPTS = 10;
constexpr DWORD REPLACE_PAUSE_MS = 100;

/// What a mode of fopen asks for. The C library's own opening would pass the file on to child processes, take
/// no long paths, and know no "x".
struct Opening {
    DWORD access = GENERIC_READ;
    DWORD disposition = OPEN_EXISTING;
    int flags = _O_RDONLY | _O_NOINHERIT;
    std::string mode;
};

Opening openingOf(const char* mode) {
    Opening opening;
    const std::string_view wanted = mode;
    const auto has = [wanted](char c) { return wanted.find(c) != std::string_view::npos; };
    const bool updates = has('+');
    if (wanted[0] == 'w')
        opening.disposition = has('x') ? CREATE_NEW : CREATE_ALWAYS;
    else if (wanted[0] == 'a')
        opening.disposition = OPEN_ALWAYS;
    if (wanted[0] != 'r' || updates) {
        opening.access = updates ? GENERIC_READ | GENERIC_WRITE : GENERIC_WRITE;
        opening.flags = (updates ? _O_RDWR : _O_WRONLY) | _O_NOINHERIT;
    }
    if (wanted[0] == 'a')
        opening.flags |= _O_APPEND;
    opening.flags |= has('b') ? _O_BINARY : _O_TEXT;
    opening.mode = std::string(1, wanted[0]) + (updates ? "+" : "") + (has('b') ? "b" : "t");
    return opening;
}

/// True when another program's hold on a file explains the error: a viewer, a search for viruses.
bool mayPass(DWORD error, const std::wstring& target) {
    if (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED)
        return false;
    const DWORD attributes = GetFileAttributesW(target.c_str());
    return attributes == INVALID_FILE_ATTRIBUTES ||
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) == 0;
}

} // namespace

bool isSeparator(char c) {
    return c == '\\' || c == '/';
}

bool isAbsolutePath(const String& path) {
    return (path.size() >= 1 && isSeparator(path[0])) || (path.size() >= 2 && path[1] == ':');
}

PathKind pathKind(const String& path) {
    const DWORD attributes = GetFileAttributesW(toWidePath(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return PathKind::MISSING;
    return attributes & FILE_ATTRIBUTE_DIRECTORY ? PathKind::DIRECTORY : PathKind::FILE;
}

bool makeDirectory(const String& path) {
    return CreateDirectoryW(toWidePath(path).c_str(), nullptr) != 0;
}

bool isSpecialFile(const String& path) {
    const std::wstring wide = toWide(path);
    // So the system names the reserved ones, such as "NUL" and, in older versions, "C:\aux.png".
    const bool isDevice = !wide.empty() && fullPath(wide).starts_with(L"\\\\.\\");
    return isDevice || pathKind(path) == PathKind::DIRECTORY;
}

bool isLink(const String& path) {
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(toWidePath(path).c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    FindClose(search);
    // Files in a cloud are reparse points too, but stand for themselves.
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           IsReparseTagNameSurrogate(entry.dwReserved0);
}

bool removeFile(const String& path) {
    return DeleteFileW(toWidePath(path).c_str()) != 0;
}

bool removeDirectory(const String& path) {
    return RemoveDirectoryW(toWidePath(path).c_str()) != 0;
}

bool replaceFile(const String& from, const String& to) {
    const std::wstring source = toWidePath(from);
    const std::wstring target = toWidePath(to);
    for (int attempt = 1;; ++attempt) {
        if (MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING))
            return true;
        const DWORD error = GetLastError();
        if (attempt == REPLACE_ATTEMPTS || !mayPass(error, target)) {
            SetLastError(error);
            return false;
        }
        Sleep(REPLACE_PAUSE_MS);
    }
}

bool listDirectory(const String& path, Vector<String>& names) {
    std::wstring pattern = toWidePath(path);
    if (pattern.empty()) { // with the separator it would be the drive's root
        SetLastError(ERROR_PATH_NOT_FOUND);
        return false;
    }
    // Long paths take no second separator.
    pattern += pattern.ends_with(L'\\') || pattern.ends_with(L'/') ? L"*" : L"\\*";
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(pattern.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    do {
        if (std::wcscmp(entry.cFileName, L".") != 0 && std::wcscmp(entry.cFileName, L"..") != 0)
            names.push_back(toUtf8(entry.cFileName));
    } while (FindNextFileW(search, &entry));
    const DWORD end = GetLastError();
    FindClose(search);
    if (end != ERROR_NO_MORE_FILES) {
        SetLastError(end);
        return false;
    }
    std::sort(names.begin(), names.end());
    return true;
}

bool fileTime(const String& path, i64& seconds) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(toWidePath(path).c_str(), GetFileExInfoStandard, &data))
        return false;
    const i64 ticks = i64(data.ftLastWriteTime.dwHighDateTime) << 32 | data.ftLastWriteTime.dwLowDateTime;
    seconds = (ticks - FILETIME_OF_1970) / FILETIME_TICKS_PER_SECOND;
    return true;
}

std::FILE* openFile(const String& path, const char* mode) {
    const Opening opening = openingOf(mode);
    const HANDLE handle = CreateFileW(toWidePath(path).c_str(), opening.access, SHARE_ALL, nullptr,
                                      opening.disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return nullptr;
    const int descriptor = _open_osfhandle(reinterpret_cast<std::intptr_t>(handle), opening.flags);
    if (descriptor < 0) {
        CloseHandle(handle);
        return nullptr;
    }
    std::FILE* const file = _fdopen(descriptor, opening.mode.c_str());
    if (!file)
        _close(descriptor);
    return file;
}

i64 openFileSize(std::FILE* file) {
    return _filelengthi64(_fileno(file));
}

bool seekFile(std::FILE* file, i64 offset) {
    return _fseeki64(file, offset, SEEK_SET) == 0;
}

bool readFileAt(std::FILE* file, i64 offset, void* out, u64 size) {
    const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(file)));
    char* bytes = static_cast<char*>(out);
    while (size > 0) {
        OVERLAPPED place = {};
        place.Offset = DWORD(u64(offset));
        place.OffsetHigh = DWORD(u64(offset) >> 32);
        DWORD got = 0;
        const auto wanted = DWORD(std::min<u64>(size, u64(1) << 30));
        if (!ReadFile(handle, bytes, wanted, &got, &place) || got == 0)
            return false;
        bytes += got;
        offset += got;
        size -= got;
    }
    return true;
}

bool mapFile(const String& path, std::string_view& bytes) {
    const HANDLE file = CreateFileW(toWidePath(path).c_str(), GENERIC_READ, SHARE_ALL, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    LARGE_INTEGER size = {};
    const bool ordinary = GetFileType(file) == FILE_TYPE_DISK && GetFileSizeEx(file, &size) != 0;
    const void* start = nullptr;
    // No file of no bytes can be mapped.
    if (ordinary && size.QuadPart > 0) {
        const HANDLE mapping = CreateFileMappingW(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
        if (mapping) {
            start = MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0);
            CloseHandle(mapping); // the view keeps it
        }
    }
    CloseHandle(file);
    if (!ordinary || (size.QuadPart > 0 && !start))
        return false;
    bytes = std::string_view(static_cast<const char*>(start), std::size_t(size.QuadPart));
    return true;
}

void unmapFile(std::string_view bytes) noexcept {
    if (!bytes.empty())
        UnmapViewOfFile(bytes.data());
}

} // namespace PlatformUtils

} // namespace Quenza

#endif
