// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "foundation/console_output.h"

#include <atomic>

#include <windows.h>

namespace Quenza {

namespace {

/// What a console had before; 0 where nothing was changed.
std::atomic<UINT> earlierCodePage{0};
std::atomic<HANDLE> changedConsole{nullptr};
std::atomic<DWORD> earlierMode{0};

} // namespace

ConsoleOutput::ConsoleOutput() {
    const UINT codePage = GetConsoleOutputCP();
    if (codePage != 0 && codePage != CP_UTF8 && SetConsoleOutputCP(CP_UTF8))
        earlierCodePage = codePage;
    for (const DWORD stream : {STD_ERROR_HANDLE, STD_OUTPUT_HANDLE}) {
        const HANDLE console = GetStdHandle(stream);
        DWORD mode = 0;
        // Both streams lead to one console at most, whose mode is then set already.
        if (!GetConsoleMode(console, &mode) || (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0)
            continue;
        if (SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING)) {
            earlierMode = mode;
            changedConsole = console;
        }
    }
}

void ConsoleOutput::restore() {
    if (const HANDLE console = changedConsole.exchange(nullptr))
        SetConsoleMode(console, earlierMode);
    if (const UINT codePage = earlierCodePage.exchange(0))
        SetConsoleOutputCP(codePage);
}

} // namespace Quenza

#endif
