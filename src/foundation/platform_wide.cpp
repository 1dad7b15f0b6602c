// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "foundation/platform_wide.h"

#include <string>

#include <windows.h>

namespace Quenza::PlatformUtils {

namespace {

/// A folder's path leaves room for a file name of the old form, of 12 characters.
constexpr std::size_t SHORT_PATH = MAX_PATH - 12 - 1;

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

std::wstring toWidePath(const String& path) {
    std::wstring wide = toWide(path);
    if (wide.size() < SHORT_PATH || wide.starts_with(L"\\\\?\\"))
        return wide;
    // Behind the prefix nothing is resolved any more: neither "..", nor slashes, nor the current folder.
    std::wstring whole(std::size_t(GetFullPathNameW(wide.c_str(), 0, nullptr, nullptr)), L'\0');
    whole.resize(GetFullPathNameW(wide.c_str(), DWORD(whole.size()), whole.data(), nullptr));
    if (whole.empty())
        return wide;
    if (whole.starts_with(L"\\\\"))
        return L"\\\\?\\UNC" + whole.substr(1);
    return L"\\\\?\\" + whole;
}

} // namespace Quenza::PlatformUtils

#endif
