// SPDX-License-Identifier: MIT
#ifdef _WIN32

#include "headless/runtime/platform.h"

#include "headless/runtime/host_error.h"

#include <atomic>
#include <io.h>
#include <thread>

#include <windows.h>

namespace headless::platform {

namespace {

constexpr int FATAL_REQUEST = 3;

std::atomic<int> requestCount{0};
std::function<void()> interruptCallback;

std::string systemReason(DWORD code) {
    wchar_t* text = nullptr;
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM |
                                            FORMAT_MESSAGE_IGNORE_INSERTS,
                                        nullptr, code, 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring message(text ? text : L"", length);
    LocalFree(text);
    while (!message.empty() && (message.back() == L'\n' || message.back() == L'\r')) {
        message.pop_back();
    }
    return utf8FromPath(std::filesystem::path(message)) + " (error " + std::to_string(code) + ")";
}

/// The system calls this on a thread of its own.
BOOL WINAPI onConsoleEvent(DWORD event) {
    if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
        return FALSE;
    }
    if (++requestCount >= FATAL_REQUEST) {
        return FALSE;
    }
    interruptCallback();
    return TRUE;
}

HANDLE handleOf(std::FILE* stream) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
}

} // namespace

std::filesystem::path pathFromUtf8(std::string_view text) {
    return std::filesystem::path(std::u8string(text.begin(), text.end()));
}

std::string utf8FromPath(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return std::string(text.begin(), text.end());
}

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

bool isTerminal(std::FILE* stream) {
    return _isatty(_fileno(stream)) != 0;
}

int terminalWidth(std::FILE* stream) {
    CONSOLE_SCREEN_BUFFER_INFO info;
    return GetConsoleScreenBufferInfo(handleOf(stream), &info) ? info.srWindow.Right - info.srWindow.Left + 1
                                                               : 80;
}

Library::Library(const std::filesystem::path& file) : handle_(LoadLibraryW(file.c_str())) {
    if (!handle_) {
        throw HostError(utf8FromPath(file) + " can't be loaded: " + systemReason(GetLastError()));
    }
}

Library::~Library() {
    FreeLibrary(static_cast<HMODULE>(handle_));
}

void* Library::find(const char* name) const {
    return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(handle_), name));
}

struct InterruptWatch::State {};

InterruptWatch::InterruptWatch(std::function<void()> onInterrupt) {
    requestCount = 0;
    interruptCallback = std::move(onInterrupt);
    SetConsoleCtrlHandler(onConsoleEvent, TRUE);
}

InterruptWatch::~InterruptWatch() {
    SetConsoleCtrlHandler(onConsoleEvent, FALSE);
}

struct KeyWatch::State {
    DWORD savedMode = 0;
    HANDLE stop = nullptr;
    std::thread thread;
};

KeyWatch::KeyWatch(std::function<void(char)> onKey) {
    const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
    auto state = std::make_unique<State>();
    if (!GetConsoleMode(input, &state->savedMode)) {
        return;
    }
    state->stop = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (!state->stop) {
        return;
    }
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
    SetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), state_->savedMode);
    CloseHandle(state_->stop);
    state_.reset();
}

} // namespace headless::platform

#endif
