// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/string.h"
#include "host/filename.h"

// Strings cross between the host's class and the scene library's as UTF-8 bytes.

inline Quenza::String toSceneString(const String& text) {
    return Quenza::String(text.GetUtf8());
}

inline Quenza::String toSceneString(const Filename& path) {
    return Quenza::String(path.GetUtf8());
}

inline String toHostString(const Quenza::String& text) {
    return String(text.view());
}

inline Filename toFilename(const Quenza::String& path) {
    return Filename(String(path.view()));
}
