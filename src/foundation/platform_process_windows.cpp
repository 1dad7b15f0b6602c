// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "foundation/platform.h"

#include "foundation/platform_wide.h"

#include <cwctype>
#include <string>
#include <thread>
#include <vector>

#include <windows.h>

#include <shellapi.h>
#include <shlobj.h>
#ifdef __MINGW32__
#include <pthread.h>
#endif

namespace Quenza::PlatformUtils {

namespace {

constexpr REGSAM REGISTRY_ACCESS = 983103; // all access
constexpr DWORD REGISTRY_BUFFER_BYTES = 1024;

HANDLE handleOf(std::thread& thread) {
#ifdef __MINGW32__ // whose threads are POSIX threads with a handle inside
    return pthread_gethandle(thread.native_handle());
#else
    return thread.native_handle();
#endif
}

} // namespace

String environment(const char* name) {
    const wchar_t* const value = _wgetenv(toWide(name).c_str());
    return value ? toUtf8(value) : String();
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
    const DWORD length = GetTempPathW(MAX_PATH + 1, path);
    if (length == 0 || length > MAX_PATH) {
        const DWORD error = length == 0 ? GetLastError() : ERROR_INSUFFICIENT_BUFFER;
        throw PlatformUtilsExcep("GetTempPath() failed, Error code: " + std::to_string(error));
    }
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
    if (!CreateProcessW(toWidePath(executablePath).c_str(), writable_line.data(), nullptr, nullptr, FALSE,
                        flags, nullptr, nullptr, &startup, &process))
        return false;
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return true;
}

std::vector<std::string> commandLineWords(int /*count*/, char** /*words*/) {
    // Those of `main` are in the code page of the system, which can't hold every path.
    int count = 0;
    wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> result;
    for (int i = 0; i < count; ++i)
        result.push_back(toUtf8(words[i]).toStdString());
    LocalFree(words);
    return result;
}

String commandLine(int /*count*/, char** /*words*/) {
    return toUtf8(GetCommandLineW());
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
    return SetThreadPriority(handleOf(thread), value) ? 0 : lastErrorCode();
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
    return text.empty() ? String("error " + std::to_string(DWORD(code))) : toUtf8(text);
}

String lastErrorText() {
    return errorText(int(GetLastError()));
}

int lastErrorCode() {
    return int(GetLastError());
}

void setLibraryDirectory(const String& directory) {
    SetDllDirectoryW(toWidePath(directory).c_str());
}

void* loadLibrary(const String& path, String& error) {
    const HMODULE library = LoadLibraryW(toWidePath(path).c_str());
    if (!library) {
        // Some of the system's texts leave a place for the file's name.
        std::string text = lastErrorText().toStdString();
        if (const size_t at = text.find("%1"); at != std::string::npos) {
            text.replace(at, 2, path.toStdString());
        }
        error = text;
    }
    return library;
}

void* librarySymbol(void* library, const char* name) {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(library), name));
}

void freeLibrary(void* library) {
    FreeLibrary(static_cast<HMODULE>(library));
}

void keepThisLibrary() {
    HMODULE module;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<const wchar_t*>(&keepThisLibrary), &module);
}

} // namespace Quenza::PlatformUtils

#endif
