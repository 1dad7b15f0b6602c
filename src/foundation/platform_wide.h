// SPDX-License-Identifier: MIT
#pragma once

#ifdef _WIN32

#include "foundation/string.h"

#include <string>

/// Between the texts of this code and those of the system's functions. Windows alone.
namespace Quenza::PlatformUtils {

/// UTF-8 as UTF-16; what is no UTF-8 becomes the replacement character.
std::wstring toWide(const String& text);
String toUtf8(const std::wstring& wide);

/// With "..", slashes and current folders resolved; devices begin with "\\.\". "" when the system refuses.
std::wstring fullPath(const std::wstring& path);

/// A path as the system's functions take it: a long one is made absolute and gets the prefix that lifts the
/// limit of 260 characters. A short one stays to the letter.
std::wstring toWidePath(const String& path);
std::wstring toWidePath(const std::wstring& path);

} // namespace Quenza::PlatformUtils

#endif
