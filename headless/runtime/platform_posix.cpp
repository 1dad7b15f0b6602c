// SPDX-License-Identifier: MIT
#ifndef _WIN32

#include "headless/runtime/platform.h"

#include "headless/runtime/host_error.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <thread>
#include <unistd.h>

namespace headless::platform {

namespace {

constexpr std::array WATCHED_SIGNALS = {SIGINT, SIGTERM, SIGHUP};
constexpr int FATAL_REQUEST = 3;
constexpr char STOP = 's';
constexpr char INTERRUPT = 'i';

// A handler may touch nothing but lock-free and volatile data.
volatile std::sig_atomic_t requestCount = 0;
volatile std::sig_atomic_t requestPipe = -1;

// How the terminal was before its keys were watched.
termios savedModes;
volatile std::sig_atomic_t areModesChanged = 0;

/// Who touches the terminal from the background is stopped.
bool isInForeground() {
    return tcgetpgrp(STDIN_FILENO) == getpgrp();
}

void restoreModes() {
    if (areModesChanged != 0 && isInForeground()) {
        tcsetattr(STDIN_FILENO, TCSANOW, &savedModes);
    }
    areModesChanged = 0;
}

/// Keys come at once and unseen; Ctrl-C and Ctrl-Z stay signals. Ctrl-\ is a key: it would leave the terminal
/// so.
bool changeModes() {
    termios modes{};
    if (!isInForeground() || tcgetattr(STDIN_FILENO, &modes) != 0) {
        return false;
    }
    modes.c_lflag &= ~static_cast<tcflag_t>(ICANON | ECHO);
    modes.c_cc[VMIN] = 1;
    modes.c_cc[VTIME] = 0;
    modes.c_cc[VQUIT] = _POSIX_VDISABLE;
    areModesChanged = 1;
    if (tcsetattr(STDIN_FILENO, TCSANOW, &modes) != 0) {
        areModesChanged = 0;
    }
    return areModesChanged != 0;
}

/// After Ctrl-Z the shell has had its own modes, and doesn't bring back ours.
void changeModesAgain() {
    termios modes{};
    if (isInForeground() && tcgetattr(STDIN_FILENO, &modes) == 0 && (modes.c_lflag & ICANON) != 0) {
        changeModes();
    }
}

/// Tells keys until a byte comes from `stopEnd`.
void watchKeys(int stopEnd, const std::function<void(char)>& onKey) {
    constexpr int LOOK_INTERVAL = 500; // milliseconds
    while (true) {
        pollfd sources[] = {{stopEnd, POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
        // What is typed while a shell has the terminal is the shell's.
        const int found = poll(sources, isInForeground() ? 2 : 1, LOOK_INTERVAL);
        if ((found < 0 && errno != EINTR) || sources[0].revents != 0) {
            return;
        }
        changeModesAgain();
        if (found > 0 && sources[1].revents != 0 && isInForeground()) {
            char key = 0;
            if (read(STDIN_FILENO, &key, 1) != 1) {
                return;
            }
            onKey(key);
        }
    }
}

extern "C" void onSignal(int signal) {
    const int savedError = errno;
    requestCount = requestCount + 1;
    if (requestCount >= FATAL_REQUEST) {
        restoreModes();
        std::signal(signal, SIG_DFL);
        raise(signal);
    }
    [[maybe_unused]] const ssize_t written = write(requestPipe, &INTERRUPT, 1);
    errno = savedError;
}

} // namespace

std::filesystem::path executablePath() {
    std::error_code error;
    std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::current_path() : path;
}

bool isTerminal(std::FILE* stream) {
    return isatty(fileno(stream)) == 1;
}

void refuseErrorBoxes() {}

bool takesSequences(std::FILE* stream) {
    return isTerminal(stream);
}

int terminalWidth(std::FILE* stream) {
    winsize size{};
    return ioctl(fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

struct InterruptWatch::State {
    int ends[2] = {-1, -1};
    std::array<struct sigaction, WATCHED_SIGNALS.size()> previous{};
    std::thread thread;
};

InterruptWatch::InterruptWatch(std::function<void()> onInterrupt) : state_(std::make_unique<State>()) {
    if (pipe(state_->ends) != 0) {
        throw HostError("Ctrl-C can't be watched: " + std::generic_category().message(errno));
    }
    for (const int end : state_->ends) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    requestCount = 0;
    requestPipe = state_->ends[1];
    state_->thread = std::thread([readEnd = state_->ends[0], call = std::move(onInterrupt)] {
        char request = STOP;
        while (true) {
            const ssize_t got = read(readEnd, &request, 1);
            if (got == 1 && request == INTERRUPT) {
                call();
            } else if (got >= 0 || errno != EINTR) {
                return;
            }
        }
    });
    struct sigaction action {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    for (size_t i = 0; i < WATCHED_SIGNALS.size(); ++i) {
        sigaction(WATCHED_SIGNALS[i], &action, &state_->previous[i]);
        // Started by nohup, the program outlives its terminal.
        if (WATCHED_SIGNALS[i] == SIGHUP && state_->previous[i].sa_handler == SIG_IGN) {
            sigaction(SIGHUP, &state_->previous[i], nullptr);
        }
    }
}

InterruptWatch::~InterruptWatch() {
    for (size_t i = 0; i < WATCHED_SIGNALS.size(); ++i) {
        sigaction(WATCHED_SIGNALS[i], &state_->previous[i], nullptr);
    }
    [[maybe_unused]] const ssize_t written = write(state_->ends[1], &STOP, 1);
    state_->thread.join();
    requestPipe = -1;
    close(state_->ends[0]);
    close(state_->ends[1]);
}

struct KeyWatch::State {
    int stopEnds[2] = {-1, -1};
    std::thread thread;
};

KeyWatch::KeyWatch(std::function<void(char)> onKey) {
    auto state = std::make_unique<State>();
    if (!isTerminal(stdin) || pipe(state->stopEnds) != 0) {
        return;
    }
    for (const int end : state->stopEnds) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
    }
    if (tcgetattr(STDIN_FILENO, &savedModes) != 0 || !changeModes()) {
        close(state->stopEnds[0]);
        close(state->stopEnds[1]);
        return;
    }
    state->thread =
        std::thread([stopEnd = state->stopEnds[0], call = std::move(onKey)] { watchKeys(stopEnd, call); });
    state_ = std::move(state);
}

KeyWatch::~KeyWatch() {
    end();
}

void KeyWatch::end() {
    if (!state_) {
        return;
    }
    [[maybe_unused]] const ssize_t written = write(state_->stopEnds[1], &STOP, 1);
    state_->thread.join();
    restoreModes();
    close(state_->stopEnds[0]);
    close(state_->stopEnds[1]);
    state_.reset();
}

} // namespace headless::platform

#endif
