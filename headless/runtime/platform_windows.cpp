// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "headless/runtime/platform.h"

#include "foundation/console_output.h"

#include <atomic>
#include <io.h>
#include <mutex>
#include <thread>

#include <windows.h>

namespace headless::platform {

namespace {

constexpr int FATAL_REQUEST = 3;

constexpr DWORD NO_MODE = ~DWORD(0);

std::atomic<int> requestCount{0};
/// Of the console's input before a KeyWatch.
std::atomic<DWORD> savedInputMode{NO_MODE};
std::mutex callbackMutex;
/// Empty without an InterruptWatch; guarded by the mutex.
std::function<void()> interruptCallback;

void restoreInputMode() {
    if (const DWORD mode = savedInputMode.exchange(NO_MODE); mode != NO_MODE) {
        SetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), mode);
    }
}

/// An ordinary end would destroy static objects while the other threads still use them, or can't go on.
void endProcess() {
    restoreInputMode();
    Quenza::ConsoleOutput::restore();
    TerminateProcess(GetCurrentProcess(), STATUS_CONTROL_C_EXIT);
}

/// The system calls this on a thread of its own.
BOOL WINAPI onConsoleEvent(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        return FALSE;
    }
    if (++requestCount >= FATAL_REQUEST) {
        endProcess();
    }
    const std::lock_guard lock(callbackMutex);
    if (interruptCallback) {
        interruptCallback();
    }
    return TRUE;
}

HANDLE handleOf(std::FILE* stream) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

} // namespace

std::filesystem::path executablePath() {
    std::wstring buffer(MAX_PATH, L'\0');
    while (true) {
        const DWORD length = GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length < buffer.size()) {
            buffer.resize(length);
            return std::filesystem::path(buffer);
        }
        buffer.resize(buffer.size() * 2);
    }
}

void refuseErrorBoxes() {
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

bool isTerminal(std::FILE* stream) {
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) != 0;
}

bool takesSequences(std::FILE* stream) {
    DWORD mode = 0;
    return GetConsoleMode(handleOf(stream), &mode) && (mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

int terminalWidth(std::FILE* stream) {
    CONSOLE_SCREEN_BUFFER_INFO info;
    return GetConsoleScreenBufferInfo(handleOf(stream), &info) ? info.srWindow.Right - info.srWindow.Left + 1
                                                               : 80;
}

struct InterruptWatch::State {};

InterruptWatch::InterruptWatch(std::function<void()> onInterrupt) {
    requestCount = 0;
    {
        const std::lock_guard lock(callbackMutex);
        interruptCallback = std::move(onInterrupt);
    }
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}

InterruptWatch::~InterruptWatch() {
    SetConsoleCtrlHandler(onConsoleEvent, FALSE);
    // A handler that the system has begun isn't waited for by the call above.
    const std::lock_guard lock(callbackMutex);
    interruptCallback = nullptr;
}

struct KeyWatch::State {
    HANDLE stop = nullptr;
    std::thread thread;
};

KeyWatch::KeyWatch(std::function<void(char)> onKey) {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    auto state = std::make_unique<State>();
    DWORD mode = 0;
    if (!GetConsoleMode(input, &mode)) {
        return;
    }
    state->stop = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (!state->stop) {
        return;
    }
    savedInputMode = mode;
    SetConsoleMode(input, ENABLE_PROCESSED_INPUT);
    state->thread = std::thread([input, stop = state->stop, call = std::move(onKey)] {
        const HANDLE sources[] = {stop, input};
        while (WaitForMultipleObjects(2, sources, FALSE, INFINITE) == WAIT_OBJECT_0 + 1) {
            INPUT_RECORD record;
            DWORD count = 0;
            if (!ReadConsoleInputW(input, &record, 1, &count)) {
                return;
            }
            const KEY_EVENT_RECORD& key = record.Event.KeyEvent;
            if (count == 1 && record.EventType == KEY_EVENT && key.bKeyDown && key.uChar.UnicodeChar < 0x80) {
                call(static_cast<char>(key.uChar.UnicodeChar));
            }
        }
    });
    state_ = std::move(state);
}

KeyWatch::~KeyWatch() {
    end();
}

void KeyWatch::end() {
    if (!state_) {
        return;
    }
    SetEvent(state_->stop);
    state_->thread.join();
    restoreInputMode();
    CloseHandle(state_->stop);
    state_.reset();
}

} // namespace headless::platform

#endif
