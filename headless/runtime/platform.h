// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>

/// What the operating system gives to the host. Texts are UTF-8.
namespace headless::platform {

/// Full path of the running program.
std::filesystem::path executablePath();

/// On Windows a missing drive or a damaged library is an error as elsewhere, not a box that waits for a
/// click.
void refuseErrorBoxes();

bool isTerminal(std::FILE* stream);
/// True for a terminal that follows control sequences.
bool takesSequences(std::FILE* stream);
/// Columns of the terminal behind a stream, 80 when they aren't known.
int terminalWidth(std::FILE* stream);

/// Calls `onInterrupt` on a thread of its own for Ctrl-C (SIGINT, and where there are such SIGTERM and the
/// terminal's end, SIGHUP) while it lives. The third request ends the process at once, for a host that hangs.
/// One at a time.
class InterruptWatch {
public:
    explicit InterruptWatch(std::function<void()> onInterrupt);
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;
    ~InterruptWatch();

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Calls `onKey` on a thread of its own for each key pressed in the terminal of standard input, without a
/// line end and without showing it. Does nothing when standard input is no terminal, or this process isn't in
/// its foreground; after a stop by Ctrl-Z it goes on as soon as the process is there again. The terminal is
/// as before at the end, also when the third Ctrl-C ends the process. One at a time.
class KeyWatch {
public:
    explicit KeyWatch(std::function<void(char)> onKey);
    KeyWatch(const KeyWatch&) = delete;
    KeyWatch& operator=(const KeyWatch&) = delete;
    ~KeyWatch();

    bool isActive() const { return state_ != nullptr; }
    /// No key is told any more.
    void end();

private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Name of the plug-in's file on this platform.
#ifdef _WIN32
inline constexpr const char* PLUGIN_FILE = "cquenza.cdl64";
#else
inline constexpr const char* PLUGIN_FILE = "cquenza.so";
#endif

} // namespace headless::platform
