// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "foundation/platform.h"

#include "foundation/platform_memory.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>
#include <io.h>
#include <malloc.h>
#include <string>
#include <string_view>
#include <vector>

#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <shlobj.h>

namespace Quenza {

void* PlatformMemory::allocateLarge(std::size_t bytes, std::size_t alignment) {
    return _aligned_malloc(bytes, alignment);
}

void PlatformMemory::freeLarge(void* block) noexcept {
    _aligned_free(block);
}

namespace PlatformUtils {

namespace {

constexpr REGSAM REGISTRY_ACCESS = 983103; // all access
constexpr DWORD REGISTRY_BUFFER_BYTES = 1024;
constexpr i64 FILETIME_TICKS_PER_SECOND = 10000000;
constexpr i64 FILETIME_OF_1970 = 116444736000000000;

std::wstring toWide(const String& text) {
    const int size = int(text.size());
    std::wstring wide(std::size_t(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), int(wide.size()));
    return wide;
}

String toUtf8(const std::wstring& wide) {
    const int size = int(wide.size());
    std::string text(
        std::size_t(WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)), '\0');
    WideCharToMultiByte(CP_UTF8, 0, wide.data(), size, text.data(), int(text.size()), nullptr, nullptr);
    return text;
}

} // namespace

bool isSeparator(char c) {
    return c == '\\' || c == '/';
}

bool isAbsolutePath(const String& path) {
    return (path.size() >= 1 && isSeparator(path[0])) || (path.size() >= 2 && path[1] == ':');
}

String readRegistryText(const String& key, const String& value) {
    HKEY handle;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, toWide(key).c_str(), 0, REGISTRY_ACCESS, &handle) != ERROR_SUCCESS)
        return "";
    wchar_t buffer[REGISTRY_BUFFER_BYTES / sizeof(wchar_t) + 1] = {};
    DWORD bytes = REGISTRY_BUFFER_BYTES;
    const LSTATUS result = RegQueryValueExW(handle, toWide(value).c_str(), nullptr, nullptr,
                                            reinterpret_cast<BYTE*>(buffer), &bytes);
    RegCloseKey(handle);
    return result == ERROR_SUCCESS ? toUtf8(buffer) : String();
}

String getAppDataDirectory() {
    wchar_t path[MAX_PATH] = {};
    const HRESULT result = SHGetFolderPathW(nullptr, CSIDL_APPDATA, nullptr, 0, path);
    if (result != S_OK)
        throw PlatformUtilsExcep("SHGetFolderPath() failed, Error code: " + std::to_string(result));
    return toUtf8(path);
}

String getTempDirectory() {
    wchar_t path[MAX_PATH + 1] = {};
    if (GetTempPathW(MAX_PATH + 1, path) == 0)
        throw PlatformUtilsExcep("GetTempPath() failed, Error code: " + std::to_string(GetLastError()));
    std::wstring directory = path;
    while (!directory.empty() && directory.back() == L'\\')
        directory.pop_back();
    return toUtf8(directory);
}

bool createProcess(const String& executablePath, const String& commandLine, bool lowPriority) {
    const std::wstring line = toWide(commandLine);
    std::vector<wchar_t> writable_line(line.begin(), line.end()); // CreateProcessW may change it
    writable_line.push_back(L'\0');
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    const DWORD flags = CREATE_DEFAULT_ERROR_MODE | (lowPriority ? BELOW_NORMAL_PRIORITY_CLASS : 0);
    if (!CreateProcessW(toWide(executablePath).c_str(), writable_line.data(), nullptr, nullptr, FALSE, flags,
                        nullptr, nullptr, &startup, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

String getProgramDirectory() {
    std::vector<wchar_t> path(32768); // no path is longer
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), DWORD(path.size()));
    const std::wstring program(path.data(), length);
    const std::size_t end = program.find_last_of(L'\\');
    return end == std::wstring::npos ? String() : toUtf8(program.substr(0, end));
}

bool lowerPriority() {
    return SetPriorityClass(GetCurrentProcess(), BELOW_NORMAL_PRIORITY_CLASS) != 0;
}

int setThreadPriority(std::thread& thread, int value) {
    return SetThreadPriority(thread.native_handle(), value) ? 0 : lastErrorCode();
}

String errorText(int code) {
    wchar_t* buffer = nullptr;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
        DWORD(code), 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
    std::wstring text(buffer ? buffer : L"", length);
    LocalFree(buffer);
    while (!text.empty() && std::iswspace(text.back()))
        text.pop_back();
    return toUtf8(text);
}

String lastErrorText() {
    return errorText(int(GetLastError()));
}

int lastErrorCode() {
    return int(GetLastError());
}

void setLibraryDirectory(const String& directory) {
    SetDllDirectoryW(toWide(directory).c_str());
}

void* loadLibrary(const String& path, String& error) {
    const HMODULE library = LoadLibraryW(toWide(path).c_str());
    if (!library)
        error = lastErrorText();
    return library;
}

void* librarySymbol(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void freeLibrary(void* library) {
    FreeLibrary(static_cast<HMODULE>(library));
}

PathKind pathKind(const String& path) {
    const DWORD attributes = GetFileAttributesW(toWide(path).c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return PathKind::MISSING;
    return attributes & FILE_ATTRIBUTE_DIRECTORY ? PathKind::DIRECTORY : PathKind::FILE;
}

bool makeDirectory(const String& path) {
    return CreateDirectoryW(toWide(path).c_str(), nullptr) != 0;
}

bool isSpecialFile(const String& path) {
    const DWORD attributes = GetFileAttributesW(toWide(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES &&
           (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_DEVICE)) != 0;
}

bool removeFile(const String& path) {
    return DeleteFileW(toWide(path).c_str()) != 0;
}

bool removeDirectory(const String& path) {
    return RemoveDirectoryW(toWide(path).c_str()) != 0;
}

bool replaceFile(const String& from, const String& to) {
    return MoveFileExW(toWide(from).c_str(), toWide(to).c_str(), MOVEFILE_REPLACE_EXISTING) != 0;
}

bool listDirectory(const String& path, Vector<String>& names) {
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW((toWide(path) + L"\\*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    do {
        if (std::wcscmp(entry.cFileName, L".") != 0 && std::wcscmp(entry.cFileName, L"..") != 0)
            names.push_back(toUtf8(entry.cFileName));
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    std::sort(names.begin(), names.end());
    return true;
}

bool fileTime(const String& path, i64& seconds) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(toWide(path).c_str(), GetFileExInfoStandard, &data))
        return false;
    const i64 ticks = i64(data.ftLastWriteTime.dwHighDateTime) << 32 | data.ftLastWriteTime.dwLowDateTime;
    seconds = (ticks - FILETIME_OF_1970) / FILETIME_TICKS_PER_SECOND;
    return true;
}

std::FILE* openFile(const String& path, const char* mode) {
    std::FILE* file = nullptr;
    const std::wstring wide_mode = toWide(String(mode) + "N"); // N: not inherited by child processes
    return _wfopen_s(&file, toWide(path).c_str(), wide_mode.c_str()) == 0 ? file : nullptr;
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
    const HANDLE file = CreateFileW(toWide(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
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
