// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "foundation/platform_wide.h"
#include "foundation/native_path.h"

#include <string>

#include <windows.h>

namespace Quenza::PlatformUtils {

namespace {

/// A folder's path leaves room for a file name of the old form, of 12 characters.
constexpr std::size_t SHORT_PATH = MAX_PATH - 12 - 1;

bool isSeparator(wchar_t c) {
    return c == L'\\' || c == L'/';
}

/// True when no current folder has a say, neither the process's nor a drive's.
bool isFullyQualified(const std::wstring& path) {
    return (path.size() >= 3 && path[1] == L':' && isSeparator(path[2])) ||
           (path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1]));
}

} // namespace

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

std::wstring fullPath(const std::wstring& path) {
    std::wstring whole(std::size_t(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr)), L'\0');
    whole.resize(GetFullPathNameW(path.c_str(), DWORD(whole.size()), whole.data(), nullptr));
    return whole;
}

std::wstring toWidePath(const String& path) {
    return toWidePath(toWide(path));
}

std::wstring toWidePath(const std::wstring& path) {
    const bool isLong = path.size() >= SHORT_PATH;
    if (path.empty() || path.starts_with(L"\\\\?\\") || (!isLong && isFullyQualified(path)))
        return path;
    // Behind the prefix nothing is resolved any more: neither "..", nor slashes, nor the current folder.
    const std::wstring whole = fullPath(path);
    const bool isDevice = whole.starts_with(L"\\\\.\\");
    if (whole.empty() || isDevice || (!isLong && whole.size() < SHORT_PATH))
        return path;
    if (whole.starts_with(L"\\\\"))
        return L"\\\\?\\UNC" + whole.substr(1);
    return L"\\\\?\\" + whole;
}

} // namespace Quenza::PlatformUtils

std::filesystem::path Quenza::systemPath(const std::filesystem::path& path) {
    return PlatformUtils::toWidePath(path.native());
}

#endif
